// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/NSProcessInfo+User.h"
#include "QKFoundation/system_info/internal/ProcessOwner.h"

#include <algorithm>

namespace qk {

using platform::services;

namespace {

bool isAdmin(const platform::Services& services) {
    const auto entry = services.users->getpwuid(internal::processOwnerUID(services));
    if (!entry.has_value() || !entry->name.has_value()) {
        return false;
    }
    const auto group = services.users->getgrnam("admin");
    return group.has_value() && std::ranges::find(group->members, *entry->name) != group->members.end();
}

bool isXcodeServer(const platform::Services& services) {
    const std::optional<NSString> name = services.host->userName();
    return name.has_value() && name->hasPrefix("_xcs");
}

} // namespace

std::uint32_t internal::processOwnerUID(const platform::Services& services) {
    return services.facts->processOwnerID.get([&] { return services.users->getuid(); });
}

std::uint32_t internal::consoleUID(const platform::Services& services) {
    const auto user = services.users->copyConsoleUser();
    return user.has_value() ? user->uid : 0;
}

bool internal::isProcessOwnerConsoleUser(const platform::Services& services) {
    return processOwnerUID(services) == consoleUID(services);
}

bool internal::isProcessOwnerRootUser(const platform::Services& services) {
    return services.facts->isProcessOwnerRoot.get([&] { return processOwnerUID(services) == 0; });
}

bool internal::isProcessOwnerXcodeServerUser(const platform::Services& services) {
    return services.facts->isProcessOwnerXcodeServer.get([&] { return isXcodeServer(services); });
}

bool internal::isProcessOwnerInAdminGroup(const platform::Services& services) {
    return services.facts->isProcessOwnerAdmin.get([&] { return isAdmin(services); });
}

NSNumber NSProcessInfo_User::processOwnerID() {
    return NSNumber(internal::processOwnerUID(*services()));
}

bool NSProcessInfo_User::isProcessOwnerRootUser() {
    return internal::isProcessOwnerRootUser(*services());
}

bool NSProcessInfo_User::isProcessOwnerConsoleUser() {
    return internal::isProcessOwnerConsoleUser(*services());
}

bool NSProcessInfo_User::isProcessOwnerXcodeServerUser() {
    return internal::isProcessOwnerXcodeServerUser(*services());
}

bool NSProcessInfo_User::isProcessOwnerInAdminGroup() {
    return internal::isProcessOwnerInAdminGroup(*services());
}

} // namespace qk
