// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/RunLoop.h"

#include <functional>
#include <memory>

namespace qk::platform::memory {

class MemoryTime;

/// A run loop that is stepped by hand and knows no time but that of its machine. `MemoryDispatch` makes them.
class QK_EXPORT MemoryRunLoop final : public RunLoop {
public:
    explicit MemoryRunLoop(std::shared_ptr<MemoryTime> time);
    MemoryRunLoop(const MemoryRunLoop&) = delete;
    MemoryRunLoop& operator=(const MemoryRunLoop&) = delete;
    ~MemoryRunLoop() override;

    void perform(std::function<void()> task) override;
    [[nodiscard]] std::unique_ptr<RunLoopSource> scheduleTimer(double seconds, bool repeats,
                                                               std::function<void()> task) override;
    bool drain() override;
    /// With nothing to call, time passes until the next timer; without timers it waits for another thread.
    void run() override;
    void stop() override;
    [[nodiscard]] int fileDescriptor() const override { return -1; }

    /// `MemoryDispatch::advance` for this loop: time passes by `seconds`, and what is due on the way is called at its
    /// own time, until nothing is left that is due.
    void advance(double seconds);

    /// What waits to be performed is let go of instead.
    void discard();

private:
    struct Contents;
    class TimerSource;

    std::shared_ptr<Contents> contents_;
};

} // namespace qk::platform::memory
