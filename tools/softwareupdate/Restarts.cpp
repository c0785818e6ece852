// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Text.h"

#include "tools/softwareupdate/PackageManagerOutput.h"

#include <algorithm>
#include <array>
#include <set>

namespace qk::softwareupdate {
namespace {

constexpr std::array<std::string_view, 16> kUsedUntilRestart = {
    "dbus",  "dbus-broker", "dbus-daemon",    "glibc",     "kernel",  "kernel-core", "kernel-default", "kernel-rt",
    "libc6", "linux",       "linux-firmware", "linux-lts", "systemd", "libsystemd0", "libudev1",       "udev"};

bool isUsedUntilRestart(std::string_view name) {
    return std::ranges::find(kUsedUntilRestart, name) != kUsedUntilRestart.end() || name.starts_with("linux-image-");
}

} // namespace

void markRestarts(PendingUpdates& updates, std::string_view rebootRequired) {
    std::set<std::string_view> listed;
    platform::parse::forEachLine(rebootRequired, [&listed](std::string_view line) {
        listed.insert(platform::parse::trimmed(line));
        return true;
    });
    for (PendingUpdate& update : updates) {
        const std::string_view full = update.name;
        const std::string_view name = full.substr(0, full.find(':')); // without a foreign architecture
        update.restart = update.restart || isUsedUntilRestart(name) || listed.contains(name);
    }
}

} // namespace qk::softwareupdate
