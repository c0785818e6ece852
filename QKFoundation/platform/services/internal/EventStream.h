// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FSEvents.h"

#include <memory>
#include <vector>

namespace qk::platform::internal {

/// What one call of a stream's callback tells; the two have one length.
struct EventBatch {
    NSArray paths;
    std::vector<FSEventStreamEventFlags> flags;
};

/// What the streams of all adapters have in common: their life, their run loop and the window of their latency. The
/// adapter says that there is something to tell, and is asked for it when the window ends.
///
/// Threads: that of the run loop.
class EventStream : public FSEventStream, public std::enable_shared_from_this<EventStream> {
public:
    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;
    ~EventStream() override;

    /// Gives `stream` to the caller of `streamCreate`, who ends it with `release`.
    [[nodiscard]] static FSEventStreamRef handOut(const std::shared_ptr<EventStream>& stream);

    void scheduleWithRunLoop(std::shared_ptr<RunLoop> runLoop) override;
    /// True also for a stream that has been started before.
    [[nodiscard]] bool start() override;
    void stop() override;
    void invalidate() override;
    void release() override;

protected:
    EventStream(FSEventStreamCallback callback, const FSEventStreamContext& context, double latency)
        : callback_(callback), context_(context), latency_(latency) {}

    /// From now on what happens is to be noted; whether it can be. When not, `endWatching` is called next.
    [[nodiscard]] virtual bool beginWatching(const std::shared_ptr<RunLoop>& runLoop) = 0;
    /// Nothing is to be noted any more, and what was is forgotten. Not called by the destructor.
    virtual void endWatching() = 0;
    /// What is to be told at the end of a window.
    [[nodiscard]] virtual EventBatch takeEvents() = 0;

    /// There is something to tell: begins a window unless one has begun.
    void beginWindow();

private:
    void watch();
    void halt();
    void deliver();

    FSEventStreamCallback callback_;
    FSEventStreamContext context_;
    double latency_;
    std::shared_ptr<RunLoop> runLoop_;
    bool isWatching_ = false;
    std::unique_ptr<RunLoopSource> window_;
    std::shared_ptr<EventStream> self_; // while the caller has not released it
};

} // namespace qk::platform::internal
