// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterface.h"
#include "QKFoundation/platform/Export.h"

#include <memory>
#include <vector>

namespace qk {

/// `QKNetworkInfo`: the network interfaces of this machine, with what is known of their hardware and configuration.
///
///     for (const auto& interface : QKNetworkInfo::activeNetworkInterfaces()) {
///         print(interface->name(), interface->linkSpeed());
///         if (const auto ipv4 = interface->configuration()->ipv4Config()) {
///             for (const Value& address : ipv4->adresses()) {
///                 print(address.description());
///             }
///         }
///     }
///
/// There is one entry per enabled service, in the order of the network preferences, so an interface that carries two
/// services is there twice. What fails on the way shortens the list or leaves a property at its default; no operation
/// reports an error or returns anything but a list, which may be empty.
///
/// Nothing is kept: every call asks the system anew and blocks for as long, well below a millisecond for a few
/// interfaces on Linux, longer where a network daemon is asked. Threads: any, at the same time.
class QK_EXPORT QKNetworkInfo {
public:
    QKNetworkInfo() = delete;

    using Interfaces = std::vector<std::shared_ptr<QKNetworkInterface>>;

    /// `networkInterfaces`. The interfaces of the services that are enabled and configured; a service without an
    /// interface is left out.
    [[nodiscard]] static Interfaces networkInterfaces();

    /// `activeNetworkInterfaces`. Those of them whose link is up.
    [[nodiscard]] static Interfaces activeNetworkInterfaces();

    /// `activeBuiltinNetworkInterfaces`. Those of them whose link is up and that are built into the machine.
    [[nodiscard]] static Interfaces activeBuiltinNetworkInterfaces();
};

} // namespace qk
