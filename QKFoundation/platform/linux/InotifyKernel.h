// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/inotify.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace qk::platform {

/// What a folder is watched for, and how.
inline constexpr std::uint32_t kWatchedEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                                IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                                IN_ONLYDIR | IN_DONT_FOLLOW | IN_EXCL_UNLINK;

/// The calls of inotify(7), with errno as they leave it. Tests put one in its place whose watches run out.
class InotifyKernel {
public:
    InotifyKernel() = default;
    InotifyKernel(const InotifyKernel&) = delete;
    InotifyKernel& operator=(const InotifyKernel&) = delete;
    virtual ~InotifyKernel() = default;

    virtual int makeInstance() { return ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC); }
    virtual int addWatch(int instance, const char* path, std::uint32_t mask) {
        return ::inotify_add_watch(instance, path, mask);
    }
    virtual void removeWatch(int instance, int watch) { ::inotify_rm_watch(instance, watch); }
    virtual ssize_t read(int instance, std::span<std::byte> bytes) {
        return ::read(instance, bytes.data(), bytes.size());
    }
};

} // namespace qk::platform
