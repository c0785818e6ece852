// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Owner.h"

#include "QKFoundation/system_info/NSProcessInfo+User.h"
#include "QKFoundation/system_info/QKUserUtils.h"

namespace qk::info {

std::optional<Body> owner(const Surroundings& /*surroundings*/) {
    return Facts{
        {"user_id", "User id", Count{getProcessOwnerUID()}},
        {"root", "Is root", NSProcessInfo_User::isProcessOwnerRootUser()},
        // 0 is nobody; root at the console is told by the next fact alone.
        {"console_user_id", "Console user id", numberContent<Count>(getConsoleUID())},
        {"console_user", "Is console user", NSProcessInfo_User::isProcessOwnerConsoleUser()},
        {"admin_group", "In group \"admin\"", NSProcessInfo_User::isProcessOwnerInAdminGroup()},
        {"build_server", "Is build server", NSProcessInfo_User::isProcessOwnerXcodeServerUser()},
    };
}

} // namespace qk::info
