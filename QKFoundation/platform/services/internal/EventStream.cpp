// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/EventStream.h"

#include <atomic>
#include <numeric>
#include <utility>

namespace qk::platform::internal {
namespace {

// The first of `count` numbers, which rise from batch to batch in the whole process.
FSEventStreamEventId takeEventIds(std::size_t count) {
    static std::atomic<FSEventStreamEventId> next = 1;
    return next.fetch_add(count, std::memory_order_relaxed);
}

} // namespace

EventStream::~EventStream() = default;

FSEventStreamRef EventStream::handOut(const std::shared_ptr<EventStream>& stream) {
    stream->self_ = stream;
    return stream.get();
}

void EventStream::scheduleWithRunLoop(std::shared_ptr<RunLoop> runLoop) {
    const bool wasWatching = isWatching_;
    halt();
    runLoop_ = std::move(runLoop);
    if (wasWatching) {
        watch();
    }
}

bool EventStream::start() {
    if (!isWatching_) {
        watch();
    }
    return isWatching_;
}

void EventStream::watch() {
    isWatching_ = runLoop_ != nullptr;
    if (isWatching_ && !beginWatching(runLoop_)) {
        halt();
    }
}

void EventStream::halt() {
    if (std::exchange(isWatching_, false)) {
        window_.reset();
        endWatching();
    }
}

void EventStream::stop() {
    halt();
}

void EventStream::invalidate() {
    halt();
    runLoop_.reset();
}

void EventStream::release() {
    const std::shared_ptr<EventStream> alive = std::move(self_); // to the end of this call
    halt();
    runLoop_.reset();
}

void EventStream::beginWindow() {
    if (window_ == nullptr && isWatching_) {
        window_ = runLoop_->scheduleTimer(latency_, false, [weak = weak_from_this()] {
            if (const auto alive = weak.lock()) {
                alive->deliver();
            }
        });
    }
}

void EventStream::deliver() {
    window_.reset(); // what happens from here on, also inside the callback, begins the next one
    const EventBatch batch = takeEvents();
    if (batch.flags.empty()) {
        return;
    }
    std::vector<FSEventStreamEventId> ids(batch.flags.size());
    std::iota(ids.begin(), ids.end(), takeEventIds(ids.size()));
    callback_(this, context_.info, ids.size(), batch.paths, batch.flags, ids);
}

} // namespace qk::platform::internal
