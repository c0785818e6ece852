// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FSEvents.h"

namespace qk::platform {

/// Streams over inotify(7) or, for a process that may, fanotify(7), which watches whole file systems and takes no time
/// to begin. Their callbacks are made by a run loop of this library, and only by one: with another the stream does not
/// start.
///
/// Watched paths are told as they are once symbolic links are resolved; links below them are not followed. A path may
/// be that of a file, and need not exist: what comes there later is told. A folder that is moved in is told as renamed,
/// and what is in it is not. Views of the kernel ("/proc") are not watched, and what is mounted below a watched path
/// later may not be. The item of a removed path is told as a file unless it was a folder.
///
/// No event is lost in silence. When the kernel had no room for some, the watched paths are told with
/// `MustScanSubDirs` and `KernelDropped`, and so is what can be found to have changed. A folder for which the kernel
/// has no watch left, or the process no descriptor, is told with `MustScanSubDirs`, and what happens in it some seconds
/// late: changes of files that exist after ten, all else after two.
class LinuxFSEvents final : public FSEvents {
public:
    /// What the kernel is asked to watch with. By default with what it allows.
    enum class Means { Any, Inotify, Fanotify };

    explicit LinuxFSEvents(Means means = Means::Any) : means_(means) {}

    /// Null for paths of which none is a string that the kernel can have as a path, and without a callback. Events
    /// before the start are not told, whatever `sinceWhen` asks for.
    [[nodiscard]] FSEventStreamRef streamCreate(FSEventStreamCallback callback, const FSEventStreamContext& context,
                                                const NSArray& pathsToWatch, FSEventStreamEventId sinceWhen,
                                                double latency, FSEventStreamCreateFlags flags) override;

private:
    Means means_;
};

} // namespace qk::platform
