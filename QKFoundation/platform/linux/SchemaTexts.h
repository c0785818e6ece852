// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/SystemConfigurationSchema.h"
#include "QKFoundation/platform/values/NSString.h"

namespace qk::platform {

/// Texts of the dynamic store as strings: they are asked for with every read.
struct SchemaTexts {
    NSString addresses = kSCPropNetIPv4Addresses;
    NSString subnetMasks = kSCPropNetIPv4SubnetMasks;
    NSString broadcastAddresses = kSCPropNetIPv4BroadcastAddresses;
    NSString configMethod = kSCPropNetIPv4ConfigMethod;
    NSString router = kSCPropNetIPv4Router;
    NSString networkSignature = kStoreKeyNetworkSignature;
    NSString prefixLength = kSCPropNetIPv6PrefixLength;
    NSString domainName = kSCPropNetDNSDomainName;
    NSString serverAddresses = kSCPropNetDNSServerAddresses;
    NSString searchDomains = kSCPropNetDNSSearchDomains;
    NSString active = kSCPropNetLinkActive;
    NSString deviceName = kSCPropNetInterfaceDeviceName;
    NSString hardware = kSCPropNetInterfaceHardware;
    NSString type = kSCPropNetInterfaceType;
    NSString userDefinedName = kSCPropUserDefinedName;
    NSString serviceOrder = kSCPropNetServiceOrder;
    NSString interfaces = kSCPropNetInterfaces;
    NSString primaryInterface = kSCDynamicStorePropNetPrimaryInterface;
    NSString primaryService = kSCDynamicStorePropNetPrimaryService;
    NSString mediaSubType = kSCPropNetEthernetMediaSubType;
    NSString mediaOptions = kSCPropNetEthernetMediaOptions;
    NSString powerStatus = "Power Status";
    NSString ssid = "SSID_STR";

    // How addresses are come by; the texts of both families.
    NSString automatic = kSCValNetIPv6ConfigMethodAutomatic;
    NSString dhcp = kSCValNetIPv4ConfigMethodDHCP;
    NSString linkLocal = kSCValNetIPv4ConfigMethodLinkLocal;
    NSString manual = kSCValNetIPv4ConfigMethodManual;
    NSString ppp = kSCValNetIPv4ConfigMethodPPP;
    NSString sixToFour = kSCValNetIPv6ConfigMethod6to4;

    // Types of interfaces.
    NSString typeBluetooth = kSCNetworkInterfaceTypeBluetooth;
    NSString typeBond = kSCNetworkInterfaceTypeBond;
    NSString typeBridge = kSCNetworkInterfaceTypeBridge;
    NSString typeEthernet = kSCNetworkInterfaceTypeEthernet;
    NSString typeFireWire = kSCNetworkInterfaceTypeFireWire;
    NSString typeIEEE80211 = kSCNetworkInterfaceTypeIEEE80211;
    NSString typeIPSec = kSCNetworkInterfaceTypeIPSec;
    NSString typeIrDA = kSCNetworkInterfaceTypeIrDA;
    NSString typeL2TP = kSCNetworkInterfaceTypeL2TP;
    NSString typePPP = kSCNetworkInterfaceTypePPP;
    NSString typePPTP = kSCNetworkInterfaceTypePPTP;
    NSString type6to4 = kSCNetworkInterfaceType6to4;
    NSString typeVLAN = kSCNetworkInterfaceTypeVLAN;
    NSString typeVPN = kSCNetworkInterfaceTypeVPN;
    NSString typeWWAN = kSCNetworkInterfaceTypeWWAN;
};

/// The one set of them, which stays to the end of the program. Any thread.
[[nodiscard]] inline const SchemaTexts& schemaTexts() {
    static const SchemaTexts& texts = *new SchemaTexts;
    return texts;
}

} // namespace qk::platform
