// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryUsers.h"

#include <algorithm>

namespace qk::platform::memory {

void MemoryUsers::setUserID(std::uint32_t uid) {
    const std::scoped_lock lock(mutex_);
    realID_ = uid;
    effectiveID_ = uid;
}

void MemoryUsers::addPasswordEntry(const PasswordEntry& entry) {
    const std::scoped_lock lock(mutex_);
    entries_.push_back(entry);
}

void MemoryUsers::addGroup(const GroupEntry& group) {
    const std::scoped_lock lock(mutex_);
    groups_.push_back(group);
}

void MemoryUsers::setConsoleUser(const std::optional<ConsoleUser>& user) {
    const std::scoped_lock lock(mutex_);
    consoleUser_ = user;
}

void MemoryUsers::refuseSwitches() {
    const std::scoped_lock lock(mutex_);
    refusesSwitches_ = true;
}

std::vector<std::uint32_t> MemoryUsers::switches() const {
    const std::scoped_lock lock(mutex_);
    return switches_;
}

std::size_t MemoryUsers::consoleRequests() const {
    const std::scoped_lock lock(mutex_);
    return consoleRequests_;
}

std::size_t MemoryUsers::userIDRequests() const {
    const std::scoped_lock lock(mutex_);
    return userIDRequests_;
}

std::uint32_t MemoryUsers::getuid() const {
    const std::scoped_lock lock(mutex_);
    ++userIDRequests_;
    return realID_;
}

std::uint32_t MemoryUsers::geteuid() const {
    const std::scoped_lock lock(mutex_);
    return effectiveID_;
}

bool MemoryUsers::seteuid(std::uint32_t uid) {
    const std::scoped_lock lock(mutex_);
    switches_.push_back(uid);
    if (refusesSwitches_ || (realID_ != 0 && uid != realID_)) {
        return false;
    }
    effectiveID_ = uid;
    return true;
}

std::optional<PasswordEntry> MemoryUsers::getpwuid(std::uint32_t uid) const {
    const std::scoped_lock lock(mutex_);
    const auto found = std::ranges::find(entries_, uid, &PasswordEntry::uid);
    return found != entries_.end() ? std::optional(*found) : std::nullopt;
}

std::optional<GroupEntry> MemoryUsers::getgrnam(const std::string& name) const {
    const std::scoped_lock lock(mutex_);
    const auto found = std::ranges::find(groups_, name, &GroupEntry::name);
    return found != groups_.end() ? std::optional(*found) : std::nullopt;
}

std::optional<ConsoleUser> MemoryUsers::copyConsoleUser() const {
    const std::scoped_lock lock(mutex_);
    ++consoleRequests_;
    return consoleUser_;
}

} // namespace qk::platform::memory
