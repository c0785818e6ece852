// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxDispatch.h"

#include "QKFoundation/platform/linux/ForkGeneration.h"
#include "QKFoundation/platform/services/internal/Completion.h"

#include <unistd.h>

#include <cstdint>
#include <limits>
#include <utility>

namespace qk::platform {

bool LinuxDispatch::isMainThread() const {
    // Asking the kernel costs as much as posting a task, and the answer changes by fork alone.
    struct Known {
        std::uint64_t generation = std::numeric_limits<std::uint64_t>::max();
        bool isMain = false;
    };
    thread_local Known known;
    if (const std::uint64_t generation = forkGeneration(); known.generation != generation) {
        known = {generation, ::getpid() == ::gettid()};
    }
    return known.isMain;
}

LinuxRunLoop& LinuxDispatch::theMainLoop() {
    if (LinuxRunLoop* const known = knownMainLoop_.load(std::memory_order_acquire)) {
        return *known;
    }
    const std::scoped_lock lock(mutex_);
    if (mainLoop_ == nullptr) {
        mainLoop_ = LinuxRunLoop::make();
        knownMainLoop_.store(mainLoop_.get(), std::memory_order_release);
    }
    return *mainLoop_;
}

std::shared_ptr<LinuxRunLoop> LinuxDispatch::mainLoop() {
    return theMainLoop().shared_from_this();
}

std::shared_ptr<LinuxRunLoop> LinuxDispatch::currentLoop() {
    if (isMainThread()) {
        return mainLoop();
    }
    thread_local std::shared_ptr<LinuxRunLoop> ofThisThread;
    if (ofThisThread == nullptr) {
        ofThisThread = LinuxRunLoop::make();
    }
    return ofThisThread;
}

void LinuxDispatch::asyncOnMainQueue(std::function<void()> task) {
    theMainLoop().perform(std::move(task));
}

void LinuxDispatch::syncOnMainQueue(const std::function<void()>& task) {
    if (task == nullptr) {
        return;
    }
    const auto completion = std::make_shared<internal::Completion>();
    theMainLoop().perform([completion, &task] { completion->run(task); });
    completion->wait();
}

} // namespace qk::platform
