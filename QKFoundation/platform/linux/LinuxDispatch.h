// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/BackgroundQueue.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"
#include "QKFoundation/platform/services/Dispatch.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace qk::platform {

/// The run loops of this process. The main one is made when it is first asked for, and with it two descriptors are
/// opened; the operations that need a loop raise `std::system_error` when the process can have no more.
class LinuxDispatch final : public Dispatch {
public:
    explicit LinuxDispatch(BackgroundQueue& backgroundQueue = BackgroundQueue::shared())
        : backgroundQueue_(backgroundQueue) {}

    [[nodiscard]] bool isMainThread() const override;
    [[nodiscard]] std::shared_ptr<RunLoop> mainRunLoop() override { return mainLoop(); }
    [[nodiscard]] std::shared_ptr<RunLoop> currentRunLoop() override { return currentLoop(); }
    void asyncOnMainQueue(std::function<void()> task) override;
    void syncOnMainQueue(const std::function<void()>& task) override;
    void asyncOnBackgroundQueue(std::function<void()> task) override { backgroundQueue_.submit(std::move(task)); }

    /// The same loops for adapters, which have descriptors to watch.
    [[nodiscard]] std::shared_ptr<LinuxRunLoop> mainLoop();
    [[nodiscard]] std::shared_ptr<LinuxRunLoop> currentLoop();

private:
    LinuxRunLoop& theMainLoop();

    BackgroundQueue& backgroundQueue_;
    std::mutex mutex_;
    std::shared_ptr<LinuxRunLoop> mainLoop_;
    std::atomic<LinuxRunLoop*> knownMainLoop_ = nullptr; // the same one, to be found without the lock
};

} // namespace qk::platform
