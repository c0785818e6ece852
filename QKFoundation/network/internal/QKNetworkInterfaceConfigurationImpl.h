// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceConfiguration.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"

#include <memory>
#include <utility>

namespace qk {

/// `QKNetworkInterfaceConfigurationImpl`: the four views of an interface's configuration.
class QKNetworkInterfaceConfigurationImpl final : public QKNetworkInterfaceConfiguration {
public:
    using IPv4 = std::shared_ptr<QKNetworkInterfaceIPv4Configuration>;
    using IPv6 = std::shared_ptr<QKNetworkInterfaceIPv6Configuration>;
    using DNS = std::shared_ptr<QKNetworkInterfaceDNSConfiguration>;
    using AirPort = std::shared_ptr<QKNetworkInterfaceAirPortConfiguration>;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithIPv4Config:ipv6Config:dnsConfig:airPortConfig:`. Each may be null.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceConfigurationImpl>
    initWithIPv4Config(IPv4 ipv4Config, IPv6 ipv6Config, DNS dnsConfig, AirPort airPortConfig);

    /// `description`. The root class's, and a line for each view.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] const IPv4& ipv4Config() const override { return ipv4Config_; }
    void setIpv4Config(IPv4 config) { ipv4Config_ = std::move(config); }
    [[nodiscard]] const IPv6& ipv6Config() const override { return ipv6Config_; }
    void setIpv6Config(IPv6 config) { ipv6Config_ = std::move(config); }
    [[nodiscard]] const DNS& dnsConfig() const override { return dnsConfig_; }
    void setDnsConfig(DNS config) { dnsConfig_ = std::move(config); }
    [[nodiscard]] const AirPort& airPortConfig() const override { return airPortConfig_; }
    void setAirPortConfig(AirPort config) { airPortConfig_ = std::move(config); }

private:
    friend class internal::ObjectMaker;

    QKNetworkInterfaceConfigurationImpl(IPv4 ipv4Config, IPv6 ipv6Config, DNS dnsConfig, AirPort airPortConfig)
        : ipv4Config_(std::move(ipv4Config)),
          ipv6Config_(std::move(ipv6Config)),
          dnsConfig_(std::move(dnsConfig)),
          airPortConfig_(std::move(airPortConfig)) {}

    IPv4 ipv4Config_;
    IPv6 ipv6Config_;
    DNS dnsConfig_;
    AirPort airPortConfig_;
};

} // namespace qk
