// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceDNSConfiguration.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <memory>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceDNSConfigurationImpl`: the name servers of a service, out of the dynamic store.
class QKNetworkInterfaceDNSConfigurationImpl final : public QKNetworkInterfaceDNSConfiguration {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithServiceDNSState:`. Null without a state.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceDNSConfigurationImpl>
    initWithServiceDNSState(const std::optional<NSDictionary>& serviceDNSState);

    /// `description`. The root class's, and a dictionary of the properties.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] const NSArray& serverAdresses() const override { return serverAdresses_; }
    void setServerAdresses(const NSArray& adresses) { serverAdresses_ = adresses; }
    [[nodiscard]] const NSString& domainName() const override { return domainName_; }
    void setDomainName(const NSString& name) { domainName_ = name; }

private:
    friend class internal::ObjectMaker;

    explicit QKNetworkInterfaceDNSConfigurationImpl(const NSDictionary& serviceDNSState);

    NSArray serverAdresses_;
    NSString domainName_;
};

} // namespace qk
