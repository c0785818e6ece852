// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInfo.h"

#include "tools/qkinfo/Commands.h"

namespace qk::info {

/// Which interfaces are shown.
struct NetworkOptions {
    bool active = false;  ///< only those whose link is up
    bool builtin = false; ///< only those that are built into the machine
};

/// The interfaces of `options`, a block each.
[[nodiscard]] List networkList(const NetworkOptions& options);

/// The facts of one interface.
[[nodiscard]] Facts interfaceFacts(const QKNetworkInterface& interface);

/// All interfaces.
[[nodiscard]] std::optional<Body> network(const Surroundings& surroundings);

} // namespace qk::info
