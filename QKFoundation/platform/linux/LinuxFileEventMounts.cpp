// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileEventMounts.h"

#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/Mounts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace qk::platform {
namespace {

bool isPseudo(std::string_view type) {
    static constexpr std::array<std::string_view, 22> kTypes{
        "autofs",     "binfmt_misc", "bpf",       "cgroup", "cgroup2", "configfs", "debugfs", "devpts",
        "devtmpfs",   "efivarfs",    "fusectl",   "mqueue", "nsfs",    "pipefs",   "proc",    "pstore",
        "rpc_pipefs", "securityfs",  "selinuxfs", "sockfs", "sysfs",   "tracefs"};
    return std::ranges::find(kTypes, type) != kTypes.end();
}

std::vector<std::string> mountsBelow(const std::vector<std::string>& roots, bool arePseudo) {
    std::vector<std::string> paths;
    const auto text = readBytes("/proc/self/mountinfo");
    for (parse::Mount& mount : parse::mounts(text.value_or(""))) {
        const bool isBelow = std::ranges::any_of(
            roots, [&](const std::string& root) { return mount.path != root && isAtOrBelow(mount.path, root); });
        if (isBelow && isPseudo(mount.type) == arePseudo) {
            paths.push_back(std::move(mount.path));
        }
    }
    return paths;
}

} // namespace

std::vector<std::string> pseudoMountsBelow(const std::vector<std::string>& roots) {
    return mountsBelow(roots, true);
}

std::vector<std::string> fileMountsBelow(const std::vector<std::string>& roots) {
    return mountsBelow(roots, false);
}

} // namespace qk::platform
