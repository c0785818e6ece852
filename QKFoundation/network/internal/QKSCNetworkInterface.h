// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace qk {

/// `QKSCNetworkInterface`: what the network preferences say of an interface, written down once. Threads: may be read
/// anywhere while nobody sets it.
class QKSCNetworkInterface final : public NSObject {
public:
    using Interface = platform::SCNetworkInterface;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithSCNetworkInterface:`. Null for null.
    [[nodiscard]] static std::shared_ptr<QKSCNetworkInterface>
    initWithSCNetworkInterface(const platform::SCNetworkInterfaceRef& interface);

    /// `description`. The root class's, and a dictionary of all properties.
    [[nodiscard]] NSString description() const override;

    /// `interfaceBSDNameForSCNetworkInterface:`. "" when it has none, as for the following.
    [[nodiscard]] NSString interfaceBSDNameForSCNetworkInterface(const Interface& interface) const;
    /// `interfaceDisplayNameForSCNetworkInterface:`.
    [[nodiscard]] NSString interfaceDisplayNameForSCNetworkInterface(const Interface& interface) const;
    /// `interfaceTypeForSCNetworkInterface:`.
    [[nodiscard]] NSString interfaceTypeForSCNetworkInterface(const Interface& interface) const;
    /// `interfaceHardwareAddressForSCNetworkInterface:`.
    [[nodiscard]] NSString interfaceHardwareAddressForSCNetworkInterface(const Interface& interface) const;

    /// `minimalTransferUnit`. Bytes; -1 for a limit that cannot be told, 0 when neither could be read.
    [[nodiscard]] std::int32_t minimalTransferUnit() const noexcept { return minimalTransferUnit_; }
    void setMinimalTransferUnit(std::int32_t limit) { minimalTransferUnit_ = limit; }

    /// `maximalTransferUnit`. As above.
    [[nodiscard]] std::int32_t maximalTransferUnit() const noexcept { return maximalTransferUnit_; }
    void setMaximalTransferUnit(std::int32_t limit) { maximalTransferUnit_ = limit; }

    /// `name`. The BSD name.
    [[nodiscard]] const NSString& name() const noexcept { return name_; }
    void setName(const NSString& name) { name_ = name; }

    /// `displayName`.
    [[nodiscard]] const NSString& displayName() const noexcept { return displayName_; }
    void setDisplayName(const NSString& name) { displayName_ = name; }

    /// `type`. One of the texts `kSCNetworkInterfaceType...`.
    [[nodiscard]] const NSString& type() const noexcept { return type_; }
    void setType(const NSString& type) { type_ = type; }

    /// `hardwareAddress`.
    [[nodiscard]] const NSString& hardwareAddress() const noexcept { return hardwareAddress_; }
    void setHardwareAddress(const NSString& address) { hardwareAddress_ = address; }

    /// `supportedInterfaceTypes`. Nothing, rather than an empty array, when there are none; so are the following.
    [[nodiscard]] const std::optional<NSArray>& supportedInterfaceTypes() const noexcept {
        return supportedInterfaceTypes_;
    }
    void setSupportedInterfaceTypes(const std::optional<NSArray>& types) { supportedInterfaceTypes_ = types; }

    /// `supportedProtocolTypes`.
    [[nodiscard]] const std::optional<NSArray>& supportedProtocolTypes() const noexcept {
        return supportedProtocolTypes_;
    }
    void setSupportedProtocolTypes(const std::optional<NSArray>& types) { supportedProtocolTypes_ = types; }

    /// `activeMediumType`. Such as "1000baseT".
    [[nodiscard]] const std::optional<NSString>& activeMediumType() const noexcept { return activeMediumType_; }
    void setActiveMediumType(const std::optional<NSString>& type) { activeMediumType_ = type; }

    /// `activeMediumOptions`. Such as "full-duplex".
    [[nodiscard]] const std::optional<NSArray>& activeMediumOptions() const noexcept { return activeMediumOptions_; }
    void setActiveMediumOptions(const std::optional<NSArray>& options) { activeMediumOptions_ = options; }

private:
    friend class internal::ObjectMaker;

    explicit QKSCNetworkInterface(const Interface& interface);

    std::int32_t minimalTransferUnit_ = 0;
    std::int32_t maximalTransferUnit_ = 0;
    NSString name_;
    NSString displayName_;
    NSString type_;
    NSString hardwareAddress_;
    std::optional<NSArray> supportedInterfaceTypes_;
    std::optional<NSArray> supportedProtocolTypes_;
    std::optional<NSString> activeMediumType_;
    std::optional<NSArray> activeMediumOptions_;
};

} // namespace qk
