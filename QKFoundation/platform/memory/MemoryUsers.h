// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Users.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace qk::platform::memory {

/// Users and groups as they were told. Until it is told, the process belongs to a user that nobody knows, with the id
/// 4294967295. Threads: any, at the same time.
class QK_EXPORT MemoryUsers final : public Users {
public:
    /// The process belongs to the user with that id, and runs with that user's rights.
    void setUserID(std::uint32_t uid);

    /// There is such an entry, behind those that were added before.
    void addPasswordEntry(const PasswordEntry& entry);
    void addGroup(const GroupEntry& group);

    /// This user is logged in at the console; nobody with nothing.
    void setConsoleUser(const std::optional<ConsoleUser>& user);

    /// Every `seteuid` is refused. Without that the system's rule holds: root may become anybody, and everybody may
    /// become the user that the process belongs to.
    void refuseSwitches();

    /// The ids that were to be switched to so far, in order, refused ones included.
    [[nodiscard]] std::vector<std::uint32_t> switches() const;

    /// How often the user at the console was asked for.
    [[nodiscard]] std::size_t consoleRequests() const;

    /// How often `getuid` was called.
    [[nodiscard]] std::size_t userIDRequests() const;

    [[nodiscard]] std::uint32_t getuid() const override;
    [[nodiscard]] std::uint32_t geteuid() const override;
    bool seteuid(std::uint32_t uid) override;
    [[nodiscard]] std::optional<PasswordEntry> getpwuid(std::uint32_t uid) const override;
    [[nodiscard]] std::optional<GroupEntry> getgrnam(const std::string& name) const override;
    [[nodiscard]] std::optional<ConsoleUser> copyConsoleUser() const override;

private:
    static constexpr std::uint32_t kUnknown = 0xFFFF'FFFF;

    mutable std::mutex mutex_;
    std::uint32_t realID_ = kUnknown;
    std::uint32_t effectiveID_ = kUnknown;
    bool refusesSwitches_ = false;
    std::vector<PasswordEntry> entries_;
    std::vector<GroupEntry> groups_;
    std::optional<ConsoleUser> consoleUser_;
    std::vector<std::uint32_t> switches_;
    mutable std::size_t consoleRequests_ = 0;
    mutable std::size_t userIDRequests_ = 0;
};

} // namespace qk::platform::memory
