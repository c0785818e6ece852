// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceConfiguration.h"
#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceType`. What kind of interface it is.
enum QKNetworkInterfaceType : std::uint64_t {
    QKNetworkInterfaceTypeUnknown = 0, ///< none of the following
    QKNetworkInterfaceType6to4 = 1,
    QKNetworkInterfaceTypeBluetooth = 2,
    QKNetworkInterfaceTypeBond = 3,
    QKNetworkInterfaceTypeEthernet = 4,
    QKNetworkInterfaceTypeFireWire = 5,
    QKNetworkInterfaceTypeIEEE80211 = 6,
    QKNetworkInterfaceTypeIPSec = 7,
    QKNetworkInterfaceTypeIrDA = 8,
    QKNetworkInterfaceTypeL2TP = 9,
    QKNetworkInterfaceTypeModem = 10,
    QKNetworkInterfaceTypePPP = 11,
    QKNetworkInterfaceTypePPTP = 12,
    QKNetworkInterfaceTypeSerial = 13,
    QKNetworkInterfaceTypeVLAN = 14,
    QKNetworkInterfaceTypeWWAN = 15,
    QKNetworkInterfaceTypeIPv4 = 16,
    QKNetworkInterfaceTypeBridge = 17
};

/// The protocol `QKNetworkInterface`: the interface of one enabled network service, as it was when it was asked for.
/// Each property can be looked up by its name as well (`valueForKey`, predicates). Threads: may be read anywhere while
/// nobody sets its configuration.
class QK_EXPORT QKNetworkInterface : public NSObject {
public:
    ~QKNetworkInterface() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `type`. `QKNetworkInterfaceTypeUnknown` for a kind that has no name here.
    [[nodiscard]] virtual QKNetworkInterfaceType type() const = 0;

    /// `name`. The system's name of the interface, such as "eth0"; "" when it is not known.
    [[nodiscard]] virtual const NSString& name() const = 0;

    /// `displayName`. What people call it, such as "Ethernet"; "" when it has no such name.
    [[nodiscard]] virtual const NSString& displayName() const = 0;

    /// `builtin`. Whether it is built into the machine; false also when the registry of devices does not know it.
    [[nodiscard]] virtual bool builtin() const = 0;

    /// `linkActive`. Whether its link is up; false also for what has no hardware of its own.
    [[nodiscard]] virtual bool linkActive() const = 0;

    /// `linkSpeed`. As the registry of devices reports it: bits per second on Linux. 0 when it is not known.
    [[nodiscard]] virtual std::int64_t linkSpeed() const = 0;

    /// `hardwareAddress`. Such as "52:54:00:12:34:56"; "" when it has none.
    [[nodiscard]] virtual const NSString& hardwareAddress() const = 0;

    /// `hardwareModel`. Vendor and model with a blank in between; nothing when the registry of devices does not know
    /// the hardware. Deliberate: the blank stands there without a vendor, without a model and without both, so callers
    /// trim what they show.
    [[nodiscard]] virtual const std::optional<NSString>& hardwareModel() const = 0;

    /// `configuration`. Addresses, name servers and the like; not null when the interface comes from `QKNetworkInfo`.
    [[nodiscard]] virtual const std::shared_ptr<QKNetworkInterfaceConfiguration>& configuration() const = 0;

    /// `setConfiguration:`. May be null.
    virtual void setConfiguration(std::shared_ptr<QKNetworkInterfaceConfiguration> configuration) = 0;
};

} // namespace qk
