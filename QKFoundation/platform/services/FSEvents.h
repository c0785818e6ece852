// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/RunLoop.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace qk::platform {

class FSEventStream;

/// A plain pointer to a stream of file-system events; `FSEventStream::release` ends what it points to.
using FSEventStreamRef = FSEventStream*;

using FSEventStreamEventFlags = std::uint32_t;
using FSEventStreamEventId = std::uint64_t;
using FSEventStreamCreateFlags = std::uint32_t;

/// What happened to one path, and what is there; several may be set, of all that happened within the latency.
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagNone = 0;
/// Something below the path changed and nobody can tell what: look through it yourself.
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagMustScanSubDirs = 0x00000001;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagUserDropped = 0x00000002;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagKernelDropped = 0x00000004;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemCreated = 0x00000100;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemRemoved = 0x00000200;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemInodeMetaMod = 0x00000400;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemRenamed = 0x00000800;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemModified = 0x00001000;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemIsFile = 0x00010000;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemIsDir = 0x00020000;
inline constexpr FSEventStreamEventFlags kFSEventStreamEventFlagItemIsSymlink = 0x00040000;

/// Paths come as an array of strings. Streams of this library always are of that kind.
inline constexpr FSEventStreamCreateFlags kFSEventStreamCreateFlagUseCFTypes = 0x00000001;
/// Events tell the item that changed rather than the folder it is in. Streams of this library always do.
inline constexpr FSEventStreamCreateFlags kFSEventStreamCreateFlagFileEvents = 0x00000010;

/// From the start of the stream on.
inline constexpr FSEventStreamEventId kFSEventStreamEventIdSinceNow = 0xFFFFFFFFFFFFFFFF;

/// What the callback is handed back. `info` is not retained: it outlives the stream, or the stream is stopped first.
struct FSEventStreamContext {
    std::int64_t version = 0;
    void* info = nullptr;
};

/// One batch of events in the order in which they first happened: the paths, absolute and without symbolic links or a
/// trailing "/", one for each element of `eventFlags` and `eventIds`.
using FSEventStreamCallback = void (*)(FSEventStreamRef stream, void* info, std::size_t numEvents,
                                       const NSArray& eventPaths, std::span<const FSEventStreamEventFlags> eventFlags,
                                       std::span<const FSEventStreamEventId> eventIds);

/// A stream of the events below some folders. Made, scheduled, started, stopped, invalidated and released, in that
/// order and on one thread, whose run loop calls the callback.
class QK_EXPORT FSEventStream { // NOLINT(cppcoreguidelines-virtual-class-destructor): `release` ends it
public:
    FSEventStream() = default;
    FSEventStream(const FSEventStream&) = delete;
    FSEventStream& operator=(const FSEventStream&) = delete;

    /// `FSEventStreamScheduleWithRunLoop`, in the default mode. Replaces the loop of an earlier call.
    virtual void scheduleWithRunLoop(std::shared_ptr<RunLoop> runLoop) = 0;

    /// `FSEventStreamStart`. From now on what happens is reported. False when nothing can be watched, or the stream has
    /// no run loop.
    [[nodiscard]] virtual bool start() = 0;

    /// `FSEventStreamStop`. The callback is not called once this has returned.
    virtual void stop() = 0;

    /// `FSEventStreamInvalidate`. Takes the stream off its run loop.
    virtual void invalidate() = 0;

    /// `FSEventStreamRelease`. Ends the stream, also inside its own callback; the pointer means nothing afterwards.
    virtual void release() = 0;

protected:
    virtual ~FSEventStream();
};

/// The events of the file system. Threads: any, at the same time.
class QK_EXPORT FSEvents {
public:
    FSEvents() = default;
    FSEvents(const FSEvents&) = delete;
    FSEvents& operator=(const FSEvents&) = delete;
    virtual ~FSEvents();

    /// `FSEventStreamCreate`. A stream of the events of everything below `pathsToWatch` (strings), all depths. The
    /// first event after quiet is delivered `latency` seconds later, together with what happened until then, the flags
    /// of one path joined. Null when it cannot be made.
    [[nodiscard]] virtual FSEventStreamRef streamCreate(FSEventStreamCallback callback,
                                                        const FSEventStreamContext& context,
                                                        const NSArray& pathsToWatch, FSEventStreamEventId sinceWhen,
                                                        double latency, FSEventStreamCreateFlags flags) = 0;
};

} // namespace qk::platform
