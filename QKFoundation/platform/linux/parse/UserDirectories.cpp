// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/UserDirectories.h"

#include "QKFoundation/platform/linux/parse/Assignments.h"

namespace qk::platform::parse {

std::optional<std::string> userDirectory(std::string_view text, std::string_view name, std::string_view home) {
    constexpr std::string_view kHome = "$HOME";
    const Assignments directories = assignments(text);
    const auto found = directories.find(name);
    if (found == directories.end()) {
        return std::nullopt;
    }
    std::string path = found->second;
    if (path == kHome || path.starts_with(std::string(kHome) + "/")) {
        path.replace(0, kHome.size(), home == "/" ? std::string_view() : home);
    }
    if (path.empty() && found->second == kHome) {
        return "/"; // the home folder of a user whose home is the root
    }
    if (!path.starts_with('/')) {
        return std::nullopt;
    }
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

} // namespace qk::platform::parse
