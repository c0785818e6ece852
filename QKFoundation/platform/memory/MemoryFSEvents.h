// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FSEvents.h"
#include "QKFoundation/platform/values/NSString.h"

#include <memory>
#include <string>
#include <vector>

namespace qk::platform::memory {

/// A file system whose events come when they are told to; there need be no files:
///
///     machine.fsEvents.emit("/home/anna/new", kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
///     machine.dispatch.advance(0.5); // the latency of the stream passes, and its callback is called
///
/// Threads: any, at the same time.
class QK_EXPORT MemoryFSEvents final : public FSEvents {
public:
    /// A stream as its maker described it, and what became of it.
    struct Stream {
        NSArray pathsToWatch;
        FSEventStreamEventId sinceWhen;
        double latency;
        FSEventStreamCreateFlags flags;
        std::shared_ptr<RunLoop> runLoop; ///< null before it is scheduled and after it was invalidated
        bool isStarted;
    };

    MemoryFSEvents();
    ~MemoryFSEvents() override;

    /// Something happened to `path`: the run loop of every started stream that watches it, or a folder above it, is
    /// given the event when it runs next, and the stream's latency begins then.
    void emit(const NSString& path, FSEventStreamEventFlags flags);

    /// Whether no stream can be made from now on.
    void refuseStreams(bool refuse = true);

    /// Whether no stream can be started from now on.
    void failStart(bool fail = true);

    /// The streams that have not been released, in the order in which they were made.
    [[nodiscard]] std::vector<Stream> streams() const;

    /// What was done with all streams up to now, in order: "create", "schedule", "start", "stop", "invalidate" and
    /// "release".
    [[nodiscard]] std::vector<std::string> calls() const;

    /// Null for paths of which none is a string that is not empty, and without a callback.
    [[nodiscard]] FSEventStreamRef streamCreate(FSEventStreamCallback callback, const FSEventStreamContext& context,
                                                const NSArray& pathsToWatch, FSEventStreamEventId sinceWhen,
                                                double latency, FSEventStreamCreateFlags flags) override;

private:
    class MemoryStream;
    struct Contents;

    std::shared_ptr<Contents> contents_;
};

} // namespace qk::platform::memory
