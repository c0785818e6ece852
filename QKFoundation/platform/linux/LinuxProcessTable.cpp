// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxProcessTable.h"

#include <climits>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string_view>

namespace qk::platform {

std::optional<std::string> LinuxProcessTable::pidPath(std::int32_t pid) const {
    constexpr std::string_view kMark = " (deleted)";
    const std::string link = root_.path("/proc/") + std::to_string(pid) + "/exe";
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    if (length <= 0) {
        return std::nullopt;
    }
    std::string path(target.data(), static_cast<std::size_t>(length));
    struct stat status {};
    if (path.ends_with(kMark) && ::lstat(root_.path(path).c_str(), &status) != 0) { // else it is a file of that name
        path.resize(path.size() - kMark.size());
    }
    return path;
}

} // namespace qk::platform
