// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <stdexcept>
#include <string>

namespace qk::tests {

/// Sets the dates of a file, a folder or a link itself, in whole seconds since 1970.
inline void setDates(const std::string& path, time_t modified, time_t accessed) {
    const timespec times[2] = {{.tv_sec = accessed, .tv_nsec = 0}, {.tv_sec = modified, .tv_nsec = 0}};
    if (::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0) {
        throw std::runtime_error("utimensat " + path);
    }
}

} // namespace qk::tests
