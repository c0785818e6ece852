// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxHost.h"

#include "QKFoundation/platform/linux/OperatingSystem.h"
#include "QKFoundation/platform/linux/SystemBus.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace qk::platform {
namespace {

constexpr std::size_t kFirstEntrySize = 1024;
constexpr std::size_t kLargestEntrySize = std::size_t{1} << 20U;
constexpr std::chrono::milliseconds kBusLimit{200};

std::optional<std::string> passwordEntryName(uid_t user) {
    for (std::size_t size = kFirstEntrySize; size <= kLargestEntrySize; size *= 2) {
        std::vector<char> texts(size);
        passwd entry{};
        passwd* found = nullptr;
        int error = 0;
        do {
            error = ::getpwuid_r(user, &entry, texts.data(), texts.size(), &found);
        } while (error == EINTR);
        if (error == ERANGE) {
            continue;
        }
        return error == 0 && found != nullptr ? std::optional<std::string>(entry.pw_name) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<NSString> LinuxHost::userName() const {
    const std::optional<std::string> name = passwordEntryName(::getuid());
    return name.has_value() ? std::optional(NSString::fromUTF8Lossy(*name)) : std::nullopt;
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
