// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/SystemConfigurationSchema.h"
#include "QKFoundation/platform/values/NSString.h"

namespace qk::internal {

/// The texts that the dynamic store is asked with, made once: a read makes no text but its key.
struct StoreTexts {
    // Domains.
    NSString setup = platform::kSCDynamicStoreDomainSetup;
    NSString state = platform::kSCDynamicStoreDomainState;

    // Entities.
    NSString interface = platform::kSCEntNetInterface;
    NSString ipv4 = platform::kSCEntNetIPv4;
    NSString ipv6 = platform::kSCEntNetIPv6;
    NSString proxies = platform::kSCEntNetProxies;
    NSString dhcp = platform::kSCEntNetDHCP;
    NSString dns = platform::kSCEntNetDNS;
    NSString link = platform::kSCEntNetLink;
    NSString airPort = platform::kSCEntNetAirPort;
    NSString linkQuality = "LinkQuality";
    NSString captiveNetwork = "CaptiveNetwork";
    NSString sleepProxyServers = "SleepProxyServers";

    // Properties.
    NSString ipv4Addresses = platform::kSCPropNetIPv4Addresses;
    NSString ipv4SubnetMasks = platform::kSCPropNetIPv4SubnetMasks;
    NSString ipv4BroadcastAddresses = platform::kSCPropNetIPv4BroadcastAddresses;
    NSString ipv4ConfigMethod = platform::kSCPropNetIPv4ConfigMethod;
    NSString ipv4Router = platform::kSCPropNetIPv4Router;
    NSString ipv6Addresses = platform::kSCPropNetIPv6Addresses;
    NSString ipv6PrefixLength = platform::kSCPropNetIPv6PrefixLength;
    NSString ipv6ConfigMethod = platform::kSCPropNetIPv6ConfigMethod;
    NSString ipv6Router = platform::kSCPropNetIPv6Router;
    NSString networkSignature = platform::kStoreKeyNetworkSignature;
    NSString dnsDomainName = platform::kSCPropNetDNSDomainName;
    NSString dnsServerAddresses = platform::kSCPropNetDNSServerAddresses;
    NSString airPortPowerStatus = "Power Status";
    NSString airPortAirPlay = "AirPlay";
    NSString airPortSSID = "SSID_STR";
    NSString mediaSubType = platform::kSCPropNetEthernetMediaSubType;
    NSString mediaOptions = platform::kSCPropNetEthernetMediaOptions;
};

/// Never destroyed: other threads may still ask while the process ends.
[[nodiscard]] const StoreTexts& storeTexts();

} // namespace qk::internal
