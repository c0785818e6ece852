// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/Users.h"

#include <utility>

namespace qk::platform {

/// The users of the running system, and the one at its console: whom logind or elogind has in front of seat0 (their
/// files below /run/systemd, under `LinuxRoot`), but not the log-in screen; where neither runs, the owner of the
/// terminal in front, who is nobody when that is root.
class LinuxUsers final : public Users {
public:
    explicit LinuxUsers(LinuxRoot root = {}) : root_(std::move(root)) {}

    [[nodiscard]] std::uint32_t getuid() const override;
    [[nodiscard]] std::uint32_t geteuid() const override;
    /// The C library's, which switches every thread; a thread that waits in the kernel may see EINTR.
    bool seteuid(std::uint32_t uid) override;
    [[nodiscard]] std::optional<PasswordEntry> getpwuid(std::uint32_t uid) const override;
    [[nodiscard]] std::optional<GroupEntry> getgrnam(const std::string& name) const override;
    [[nodiscard]] std::optional<ConsoleUser> copyConsoleUser() const override;

private:
    [[nodiscard]] std::optional<ConsoleUser> userOfSeat(std::string_view seat) const;
    [[nodiscard]] std::optional<ConsoleUser> ownerOfTerminal() const;

    LinuxRoot root_;
};

} // namespace qk::platform
