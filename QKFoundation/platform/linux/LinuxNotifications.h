// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxDispatch.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/DistributedNotificationCenter.h"

#include <chrono>
#include <memory>

namespace qk::platform {

/// Notifications over the D-Bus session bus (DBUS_SESSION_BUS_ADDRESS, else $XDG_RUNTIME_DIR/bus): a signal "Notify" of
/// the interface com.qkfoundation.DistributedNotificationCenter with the name as its one argument. The connection is
/// made when it is first needed, is served by the main run loop, and no answer is waited for longer than `limit`.
/// Without a bus, and for names that D-Bus cannot carry (a zero character, a lone surrogate), what is posted stays in
/// this process, as it does in a child made by fork. After the connection was lost, the next observer or post makes a
/// new one. A bus that does not answer a post in time may still tell other processes of it. Suspension behaviours mean
/// nothing on Linux. Threads: any, at the same time.
[[nodiscard]] std::shared_ptr<DistributedNotificationCenter>
makeLinuxNotifications(const std::shared_ptr<LinuxDispatch>& dispatch, const Variables& variables,
                       std::chrono::milliseconds limit = std::chrono::milliseconds(200));

} // namespace qk::platform
