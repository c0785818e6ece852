// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceIPv6Configuration.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceIPv6ConfigurationImpl`: IPv6 of an interface and its service, out of the dynamic store.
class QKNetworkInterfaceIPv6ConfigurationImpl final : public QKNetworkInterfaceIPv6Configuration {
public:
    using Method = QKNetworkInterfaceIPv6ConfigMethod;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithInterfaceIPv6State:serviceIPv6Setup:serviceIPv6State:`. Null without a state of the interface.
    /// Deliberate: the service's state counts only when its setup names a known method; then its addresses and prefix
    /// lengths replace those of the interface, missing ones too.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceIPv6ConfigurationImpl>
    initWithInterfaceIPv6State(const std::optional<NSDictionary>& interfaceIPv6State,
                               const std::optional<NSDictionary>& serviceIPv6Setup,
                               const std::optional<NSDictionary>& serviceIPv6State);

    /// `configMethodForConfigMethodString:`. Unknown for nothing and for any other text.
    [[nodiscard]] Method configMethodForConfigMethodString(const std::optional<NSString>& string) const;

    /// `description`. The root class's, and a dictionary of all properties.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] Method configMethod() const override { return configMethod_; }
    void setConfigMethod(Method method) { configMethod_ = method; }
    [[nodiscard]] const std::optional<NSString>& configMethodString() const override { return configMethodString_; }
    void setConfigMethodString(const std::optional<NSString>& string) { configMethodString_ = string; }
    [[nodiscard]] const NSArray& adresses() const override { return adresses_; }
    void setAdresses(const NSArray& adresses) { adresses_ = adresses; }
    [[nodiscard]] const NSArray& prefixLengths() const override { return prefixLengths_; }
    void setPrefixLengths(const NSArray& lengths) { prefixLengths_ = lengths; }
    [[nodiscard]] const std::optional<NSString>& routerAddress() const override { return routerAddress_; }
    void setRouterAddress(const std::optional<NSString>& address) { routerAddress_ = address; }
    [[nodiscard]] const std::optional<NSString>& networkSignature() const override { return networkSignature_; }
    void setNetworkSignature(const std::optional<NSString>& signature) { networkSignature_ = signature; }

private:
    friend class internal::ObjectMaker;

    QKNetworkInterfaceIPv6ConfigurationImpl(const NSDictionary& interfaceIPv6State,
                                            const std::optional<NSDictionary>& serviceIPv6Setup,
                                            const std::optional<NSDictionary>& serviceIPv6State);

    [[nodiscard]] std::uint64_t configMethodNumber() const { return configMethod_; }
    void setConfigMethodNumber(std::uint64_t number) { configMethod_ = static_cast<Method>(number); }

    Method configMethod_ = QKNetworkInterfaceIPv6ConfigMethodUnknown;
    std::optional<NSString> configMethodString_;
    NSArray adresses_;
    NSArray prefixLengths_;
    std::optional<NSString> routerAddress_;
    std::optional<NSString> networkSignature_;
};

} // namespace qk
