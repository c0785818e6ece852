// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <cstdint>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceIPv6ConfigMethod`. How a service gets its IPv6 configuration.
enum QKNetworkInterfaceIPv6ConfigMethod : std::uint64_t {
    QKNetworkInterfaceIPv6ConfigMethodUnknown = 0, ///< none of the following, or not configured
    QKNetworkInterfaceIPv6ConfigMethodAutomatic = 1,
    QKNetworkInterfaceIPv6ConfigMethodLinkLocal = 2,
    QKNetworkInterfaceIPv6ConfigMethodManual = 3,
    QKNetworkInterfaceIPv6ConfigMethodRouterAdvertisement = 4,
    QKNetworkInterfaceIPv6ConfigMethod6to4 = 5
};

/// The protocol `QKNetworkInterfaceIPv6Configuration`: IPv6 on an interface. Deliberate: the spelling of `adresses`
/// is the property's name. Threads: may be read anywhere.
class QK_EXPORT QKNetworkInterfaceIPv6Configuration : public NSObject {
public:
    ~QKNetworkInterfaceIPv6Configuration() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `configMethod`. Unknown when the service is not set up for IPv6.
    [[nodiscard]] virtual QKNetworkInterfaceIPv6ConfigMethod configMethod() const = 0;

    /// `configMethodString`. The method as the configuration writes it; "" when it names none, nothing when the service
    /// is not set up for IPv6.
    [[nodiscard]] virtual const std::optional<NSString>& configMethodString() const = 0;

    /// `adresses`. Texts, "2001:db8::10": the service's when its method is known and it has a state, else those of the
    /// interface.
    [[nodiscard]] virtual const NSArray& adresses() const = 0;

    /// `prefixLengths`. Numbers, one for each address as a rule.
    [[nodiscard]] virtual const NSArray& prefixLengths() const = 0;

    /// `routerAddress`. "" when the service's state names none; nothing when that state is missing or does not count.
    [[nodiscard]] virtual const std::optional<NSString>& routerAddress() const = 0;

    /// `networkSignature`. A text that is the same whenever the machine is in the same network. "" and nothing as for
    /// `routerAddress`.
    [[nodiscard]] virtual const std::optional<NSString>& networkSignature() const = 0;
};

} // namespace qk
