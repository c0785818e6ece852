// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxHost.h"

#include "QKFoundation/platform/linux/OperatingSystem.h"
#include "QKFoundation/platform/linux/SystemBus.h"
#include "QKFoundation/platform/linux/UserDatabase.h"

#include <unistd.h>

#include <chrono>
#include <string>

namespace qk::platform {
namespace {

constexpr std::chrono::milliseconds kBusLimit{200};

} // namespace

std::optional<NSString> LinuxHost::userName() const {
    const std::optional<PasswordEntry> entry = userdatabase::passwordEntry(::getuid());
    const bool hasName = entry.has_value() && entry->name.has_value();
    return hasName ? std::optional(NSString::fromUTF8Lossy(*entry->name)) : std::nullopt;
}

std::optional<NSString> LinuxHost::localizedName() const {
    std::optional<std::string> name = operatingsystem::prettyHostName(root_);
    if (!name.has_value() && root_.isHost()) {
        name = readBusProperty({"org.freedesktop.hostname1", "/org/freedesktop/hostname1", "org.freedesktop.hostname1"},
                               "PrettyHostname", kBusLimit);
    }
    return name.has_value() && !name->empty() ? std::optional(NSString::fromUTF8Lossy(*name)) : std::nullopt;
}

} // namespace qk::platform
