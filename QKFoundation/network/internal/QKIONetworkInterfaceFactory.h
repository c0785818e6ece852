// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/internal/QKIONetworkInterface.h"
#include "QKFoundation/platform/services/Services.h"

#include <memory>
#include <vector>

namespace qk {

/// `QKIONetworkInterfaceFactory`: the registry's network interfaces, read afresh by every call. Threads: any.
class QKIONetworkInterfaceFactory {
public:
    QKIONetworkInterfaceFactory() = delete;

    using Interfaces = std::vector<std::shared_ptr<QKIONetworkInterface>>;

    /// `hardwareInterfaceForBSDName:`. The first entry of that name; null when there is none. Deliberate: it may be any
    /// device with a BSD name, such as a disk.
    [[nodiscard]] static std::shared_ptr<QKIONetworkInterface>
    hardwareInterfaceForBSDName(const NSString& name, const platform::Services& services);

    /// `hardwareInterfaces`. The entries of the class of network interfaces, in the registry's order.
    [[nodiscard]] static Interfaces hardwareInterfaces(const platform::Services& services);

    /// `activeHardwareInterfaces`. Those of them whose link is up.
    [[nodiscard]] static Interfaces activeHardwareInterfaces(const platform::Services& services);
};

} // namespace qk
