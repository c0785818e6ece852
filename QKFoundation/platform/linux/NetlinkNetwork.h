// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetlinkSocket.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <cstdint>
#include <optional>
#include <string>

/// The network as rtnetlink(7) tells it.
namespace qk::platform {

/// Links, addresses and default routes, asked for over a connection to NETLINK_ROUTE. A kind that the kernel refuses to
/// list is empty.
[[nodiscard]] KernelNetwork readKernelNetwork(NetlinkSocket& socket);

/// Puts the records into the order that `KernelNetwork` promises; of several links with one index the first stays.
void arrange(KernelNetwork& network);

/// Parent devices from the files of /sys, for a kernel before 5.14, which does not send them.
void addParentDevices(const LinuxRoot& root, KernelNetwork& network);

/// The hardware address of one neighbour on a link.
[[nodiscard]] std::optional<std::string> readNeighbour(NetlinkSocket& socket, std::int32_t link,
                                                       const InternetAddress& address);

} // namespace qk::platform
