// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceIPv4Configuration.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceIPv4ConfigurationImpl`: IPv4 of an interface and its service, out of the dynamic store.
class QKNetworkInterfaceIPv4ConfigurationImpl final : public QKNetworkInterfaceIPv4Configuration {
public:
    using Method = QKNetworkInterfaceIPv4ConfigMethod;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithInterfaceIPv4State:serviceIPv4Setup:serviceIPv4State:`. Null without a state of the interface.
    /// Deliberate: the service's state counts only when its setup names a known method; then its addresses and masks
    /// replace those of the interface, missing ones too.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceIPv4ConfigurationImpl>
    initWithInterfaceIPv4State(const std::optional<NSDictionary>& interfaceIPv4State,
                               const std::optional<NSDictionary>& serviceIPv4Setup,
                               const std::optional<NSDictionary>& serviceIPv4State);

    /// `configMethodForConfigMethodString:`. Unknown for nothing and for any other text.
    [[nodiscard]] Method configMethodForConfigMethodString(const std::optional<NSString>& string) const;

    /// `description`. The root class's, and a dictionary of the properties. Deliberate: without `routerAddress`.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] Method configMethod() const override { return configMethod_; }
    void setConfigMethod(Method method) { configMethod_ = method; }
    [[nodiscard]] const std::optional<NSString>& configMethodString() const override { return configMethodString_; }
    void setConfigMethodString(const std::optional<NSString>& string) { configMethodString_ = string; }
    [[nodiscard]] const NSArray& adresses() const override { return adresses_; }
    void setAdresses(const NSArray& adresses) { adresses_ = adresses; }
    [[nodiscard]] const NSArray& subnetMasks() const override { return subnetMasks_; }
    void setSubnetMasks(const NSArray& masks) { subnetMasks_ = masks; }
    [[nodiscard]] const NSArray& broadcastAddresses() const override { return broadcastAddresses_; }
    void setBroadcastAddresses(const NSArray& addresses) { broadcastAddresses_ = addresses; }
    [[nodiscard]] const std::optional<NSString>& routerAddress() const override { return routerAddress_; }
    void setRouterAddress(const std::optional<NSString>& address) { routerAddress_ = address; }
    [[nodiscard]] const std::optional<NSString>& networkSignature() const override { return networkSignature_; }
    void setNetworkSignature(const std::optional<NSString>& signature) { networkSignature_ = signature; }

private:
    friend class internal::ObjectMaker;

    QKNetworkInterfaceIPv4ConfigurationImpl(const NSDictionary& interfaceIPv4State,
                                            const std::optional<NSDictionary>& serviceIPv4Setup,
                                            const std::optional<NSDictionary>& serviceIPv4State);

    [[nodiscard]] std::uint64_t configMethodNumber() const { return configMethod_; }
    void setConfigMethodNumber(std::uint64_t number) { configMethod_ = static_cast<Method>(number); }

    Method configMethod_ = QKNetworkInterfaceIPv4ConfigMethodUnknown;
    std::optional<NSString> configMethodString_;
    NSArray adresses_;
    NSArray subnetMasks_;
    NSArray broadcastAddresses_;
    std::optional<NSString> routerAddress_;
    std::optional<NSString> networkSignature_;
};

} // namespace qk
