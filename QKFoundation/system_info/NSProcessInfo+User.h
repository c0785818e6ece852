// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSNumber.h"

/// `NSProcessInfo(User)`: who runs this process. What is said to be kept is found out by the first call and does not
/// change afterwards, whatever happens to the system's users and groups. Threads: any, at the same time.
namespace qk::NSProcessInfo_User {

/// `processOwnerID`. The real user id of the process, kept.
[[nodiscard]] QK_EXPORT NSNumber processOwnerID();

/// `isProcessOwnerRootUser`. Whether that is 0, kept.
[[nodiscard]] QK_EXPORT bool isProcessOwnerRootUser();

/// `isProcessOwnerConsoleUser`. Whether that is the user at the console, who is asked for by every call. Deliberate:
/// nobody at the console counts as user 0, so a process of root answers true then.
[[nodiscard]] QK_EXPORT bool isProcessOwnerConsoleUser();

/// `isProcessOwnerXcodeServerUser`. Whether the process's user name begins with "_xcs", as that of the developer tools'
/// build server does, kept. False without a name.
[[nodiscard]] QK_EXPORT bool isProcessOwnerXcodeServerUser();

/// `isProcessOwnerInAdminGroup`. Whether the list of members of the group named "admin" holds the process owner's name,
/// byte by byte, kept. False without a password entry, a name, the group or members. Deliberate: a primary group does
/// not count, and neither does another group with the same rights. Linux: few systems have such a group; "sudo" and
/// "wheel" are not asked. May wait where groups come from a server.
[[nodiscard]] QK_EXPORT bool isProcessOwnerInAdminGroup();

} // namespace qk::NSProcessInfo_User
