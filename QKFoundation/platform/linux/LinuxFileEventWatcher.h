// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"
#include "QKFoundation/platform/services/FSEvents.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qk::platform {

/// What a watcher adds to an event's flags for the stream, which settles it when the event is told: the item was no
/// folder, so it has to be looked at; it was closed by somebody who may have written to it.
inline constexpr FSEventStreamEventFlags kFileEventIsNoFolder = 0x80000000;
inline constexpr FSEventStreamEventFlags kFileEventClosed = 0x40000000;

/// Something happened to the item at `path`, in the kernel's bytes.
using FileEventTeller = std::function<void(std::string path, FSEventStreamEventFlags flags)>;

/// What has happened to an item with these dates at or after `since`; none when nothing has.
[[nodiscard]] FSEventStreamEventFlags changesSince(const ItemDates& dates, std::int64_t since);

/// Watches trees by one of the kernel's means for as long as it lives, on a run loop and its thread. It starts no
/// thread and reads in steps, between which the loop serves others. In a child made by fork it may be destroyed, and
/// must not be used; its parent's goes on.
class LinuxFileEventWatcher {
public:
    LinuxFileEventWatcher() = default;
    LinuxFileEventWatcher(const LinuxFileEventWatcher&) = delete;
    LinuxFileEventWatcher& operator=(const LinuxFileEventWatcher&) = delete;
    virtual ~LinuxFileEventWatcher() = default;

    /// What the watcher has told so far is being delivered.
    virtual void windowEnds() = 0;

    /// What has been told since the queue was last seen empty happened after this time, in nanoseconds of the clock
    /// that file systems date their files by.
    [[nodiscard]] virtual std::int64_t quietSince() const = 0;
};

/// Watches `roots`, which are canonical and none below another, through inotify(7); null when that has no instance
/// left. A root need not exist.
[[nodiscard]] std::unique_ptr<LinuxFileEventWatcher> watchWithInotify(const std::shared_ptr<LinuxRunLoop>& loop,
                                                                      const std::vector<std::string>& roots,
                                                                      FileEventTeller tell);

/// Watches `roots` through fanotify(7), by whole file systems; null without the rights for that, and where a file
/// system of the trees cannot be watched in this way.
[[nodiscard]] std::unique_ptr<LinuxFileEventWatcher> watchWithFanotify(const std::shared_ptr<LinuxRunLoop>& loop,
                                                                       const std::vector<std::string>& roots,
                                                                       FileEventTeller tell);

} // namespace qk::platform
