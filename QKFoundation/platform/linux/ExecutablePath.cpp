// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ExecutablePath.h"

#include <climits>

#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace qk::platform {

std::optional<std::string> executablePath(const LinuxRoot& root, std::string_view link) {
    constexpr std::string_view kMark = " (deleted)";
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(root.path(link).c_str(), target.data(), target.size());
    if (length <= 0) {
        return std::nullopt;
    }
    std::string path(target.data(), static_cast<std::size_t>(length));
    struct stat status {};
    if (path.ends_with(kMark) && ::lstat(root.path(path).c_str(), &status) != 0) { // else it is a file of that name
        path.resize(path.size() - kMark.size());
    }
    return path;
}

} // namespace qk::platform
