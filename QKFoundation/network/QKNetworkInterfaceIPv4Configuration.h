// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <cstdint>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceIPv4ConfigMethod`. How a service gets its IPv4 configuration.
enum QKNetworkInterfaceIPv4ConfigMethod : std::uint64_t {
    QKNetworkInterfaceIPv4ConfigMethodUnknown = 0, ///< none of the following, or not configured
    QKNetworkInterfaceIPv4ConfigMethodManual = 1,
    QKNetworkInterfaceIPv4ConfigMethodAutomatic = 2,
    QKNetworkInterfaceIPv4ConfigMethodDHCP = 3,
    QKNetworkInterfaceIPv4ConfigMethodINFORM = 4,
    QKNetworkInterfaceIPv4ConfigMethodBOOTP = 5,
    QKNetworkInterfaceIPv4ConfigMethodPPP = 6,
    QKNetworkInterfaceIPv4ConfigMethodLinkLocal = 7
};

/// The protocol `QKNetworkInterfaceIPv4Configuration`: IPv4 on an interface. Deliberate: the spelling of `adresses`
/// is the property's name. Threads: may be read anywhere.
class QK_EXPORT QKNetworkInterfaceIPv4Configuration : public NSObject {
public:
    ~QKNetworkInterfaceIPv4Configuration() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `configMethod`. Unknown when the service is not set up for IPv4.
    [[nodiscard]] virtual QKNetworkInterfaceIPv4ConfigMethod configMethod() const = 0;

    /// `configMethodString`. The method as the configuration writes it; "" when it names none, nothing when the service
    /// is not set up for IPv4.
    [[nodiscard]] virtual const std::optional<NSString>& configMethodString() const = 0;

    /// `adresses`. Texts, "192.0.2.10": the service's when its method is known and it has a state, else those of the
    /// interface.
    [[nodiscard]] virtual const NSArray& adresses() const = 0;

    /// `subnetMasks`. Texts, "255.255.255.0", one for each address as a rule.
    [[nodiscard]] virtual const NSArray& subnetMasks() const = 0;

    /// `broadcastAddresses`. Texts, of the interface; addresses without one are left out.
    [[nodiscard]] virtual const NSArray& broadcastAddresses() const = 0;

    /// `routerAddress`. "" when the service's state names none; nothing when that state is missing or does not count.
    [[nodiscard]] virtual const std::optional<NSString>& routerAddress() const = 0;

    /// `networkSignature`. A text that is the same whenever the machine is in the same network. "" and nothing as for
    /// `routerAddress`.
    [[nodiscard]] virtual const std::optional<NSString>& networkSignature() const = 0;
};

} // namespace qk
