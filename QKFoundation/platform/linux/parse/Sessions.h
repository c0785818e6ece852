// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What logind and elogind write below /run/systemd: assignments, one to a line.
namespace qk::platform::parse {

/// The session in front of a seat.
struct ActiveSession {
    std::string id; ///< the name of its file; "" when the seat does not tell
    std::uint32_t uid = 0;
};

/// The session that a seat's file (/run/systemd/seats/seat0) tells: ACTIVE and ACTIVE_UID. Nothing without a user. An
/// id that is no file's name reads as "".
[[nodiscard]] std::optional<ActiveSession> activeSession(std::string_view seat);

/// Whether a person is logged in to the session of that file (/run/systemd/sessions/ID): its CLASS is "user" or one of
/// its kinds ("user-early"), or is not told. The log-in screen's is "greeter", the locked screen's "lock-screen".
[[nodiscard]] bool isOfUser(std::string_view session);

/// The name that a user's file (/run/systemd/users/UID) tells: NAME. Nothing when it is missing or empty.
[[nodiscard]] std::optional<std::string> userName(std::string_view user);

/// The terminal in front of the console that /sys/class/tty/tty0/active tells: "tty1". Nothing for what is no terminal
/// of the console.
[[nodiscard]] std::optional<std::string> activeTerminal(std::string_view active);

} // namespace qk::platform::parse
