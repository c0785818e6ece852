// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qk::platform {

/// The user at the console.
struct ConsoleUser {
    NSString name;
    std::uint32_t uid = 0;
};

/// An entry of the password database.
struct PasswordEntry {
    std::optional<std::string> name; ///< as the bytes that the system compares
    std::uint32_t uid = 0;
    NSString homeDirectory;
};

/// An entry of the group database.
struct GroupEntry {
    std::string name;
    std::vector<std::string> members; ///< the explicit list alone
};

/// Users and groups, and who this process is. Threads: any, at the same time; `seteuid` changes the whole process.
class QK_EXPORT Users {
public:
    Users() = default;
    Users(const Users&) = delete;
    Users& operator=(const Users&) = delete;
    virtual ~Users();

    /// `getuid`. The real user id of the process.
    [[nodiscard]] virtual std::uint32_t getuid() const = 0;

    /// `geteuid`. The effective user id of the process.
    [[nodiscard]] virtual std::uint32_t geteuid() const = 0;

    /// `seteuid`. Whether the effective user id of the whole process, all of its threads, is `uid` now.
    virtual bool seteuid(std::uint32_t uid) = 0;

    /// `getpwuid`. The first entry with that id; nothing when there is none.
    [[nodiscard]] virtual std::optional<PasswordEntry> getpwuid(std::uint32_t uid) const = 0;

    /// `getgrnam`. The first group of that name; nothing when there is none.
    [[nodiscard]] virtual std::optional<GroupEntry> getgrnam(const std::string& name) const = 0;

    /// `SCDynamicStoreCopyConsoleUser`. Who is logged in at the console now; nothing when nobody is.
    [[nodiscard]] virtual std::optional<ConsoleUser> copyConsoleUser() const = 0;
};

} // namespace qk::platform
