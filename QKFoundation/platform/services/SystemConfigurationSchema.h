// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

/// The keys and texts of the dynamic store and of the network preferences, and how keys are made of them.
namespace qk::platform {

// Domains; each ends with a colon.
inline constexpr char kSCDynamicStoreDomainSetup[] = "Setup:";
inline constexpr char kSCDynamicStoreDomainState[] = "State:";

// Entities: what a key tells about.
inline constexpr char kSCEntNetInterface[] = "Interface";
inline constexpr char kSCEntNetIPv4[] = "IPv4";
inline constexpr char kSCEntNetIPv6[] = "IPv6";
inline constexpr char kSCEntNetProxies[] = "Proxies";
inline constexpr char kSCEntNetDHCP[] = "DHCP";
inline constexpr char kSCEntNetDNS[] = "DNS";
inline constexpr char kSCEntNetLink[] = "Link";
inline constexpr char kSCEntNetAirPort[] = "AirPort";
inline constexpr char kSCEntNetEthernet[] = "Ethernet";
inline constexpr char kSCEntNetModem[] = "Modem";
inline constexpr char kSCEntNetPPP[] = "PPP";
inline constexpr char kSCEntNetSMB[] = "SMB";
inline constexpr char kSCEntNet6to4[] = "6to4";

// Properties of IPv4.
inline constexpr char kSCPropNetIPv4Addresses[] = "Addresses";
inline constexpr char kSCPropNetIPv4SubnetMasks[] = "SubnetMasks";
inline constexpr char kSCPropNetIPv4BroadcastAddresses[] = "BroadcastAddresses";
inline constexpr char kSCPropNetIPv4ConfigMethod[] = "ConfigMethod";
inline constexpr char kSCPropNetIPv4Router[] = "Router";
inline constexpr char kSCPropNetIPv4DHCPClientID[] = "DHCPClientID";
inline constexpr char kSCPropNetIPv4DestAddresses[] = "DestAddresses";

// How IPv4 is configured.
inline constexpr char kSCValNetIPv4ConfigMethodAutomatic[] = "Automatic";
inline constexpr char kSCValNetIPv4ConfigMethodBOOTP[] = "BOOTP";
inline constexpr char kSCValNetIPv4ConfigMethodDHCP[] = "DHCP";
inline constexpr char kSCValNetIPv4ConfigMethodINFORM[] = "INFORM";
inline constexpr char kSCValNetIPv4ConfigMethodLinkLocal[] = "LinkLocal";
inline constexpr char kSCValNetIPv4ConfigMethodManual[] = "Manual";
inline constexpr char kSCValNetIPv4ConfigMethodPPP[] = "PPP";
inline constexpr char kSCValNetIPv4ConfigMethodFailover[] = "Failover";

// Properties of IPv6; the prefix lengths are an array of numbers.
inline constexpr char kSCPropNetIPv6Addresses[] = "Addresses";
inline constexpr char kSCPropNetIPv6PrefixLength[] = "PrefixLength";
inline constexpr char kSCPropNetIPv6ConfigMethod[] = "ConfigMethod";
inline constexpr char kSCPropNetIPv6Router[] = "Router";
inline constexpr char kSCPropNetIPv6Flags[] = "Flags";
inline constexpr char kSCPropNetIPv6DestAddresses[] = "DestAddresses";

// How IPv6 is configured.
inline constexpr char kSCValNetIPv6ConfigMethodAutomatic[] = "Automatic";
inline constexpr char kSCValNetIPv6ConfigMethodLinkLocal[] = "LinkLocal";
inline constexpr char kSCValNetIPv6ConfigMethodManual[] = "Manual";
inline constexpr char kSCValNetIPv6ConfigMethodRouterAdvertisement[] = "RouterAdvertisement";
inline constexpr char kSCValNetIPv6ConfigMethod6to4[] = "6to4";

// Properties of DNS.
inline constexpr char kSCPropNetDNSDomainName[] = "DomainName";
inline constexpr char kSCPropNetDNSServerAddresses[] = "ServerAddresses";
inline constexpr char kSCPropNetDNSSearchDomains[] = "SearchDomains";

// The medium of an interface: a text, an array of texts.
inline constexpr char kSCPropNetEthernetMediaSubType[] = "MediaSubType";
inline constexpr char kSCPropNetEthernetMediaOptions[] = "MediaOptions";
inline constexpr char kSCPropNetEthernetMTU[] = "MTU";

// Properties of a link.
inline constexpr char kSCPropNetLinkActive[] = "Active";

// Properties of a service's interface.
inline constexpr char kSCPropNetInterfaceDeviceName[] = "DeviceName";
inline constexpr char kSCPropNetInterfaceHardware[] = "Hardware";
inline constexpr char kSCPropNetInterfaceType[] = "Type";
inline constexpr char kSCPropNetInterfaceSubType[] = "SubType";
inline constexpr char kSCPropUserDefinedName[] = "UserDefinedName";
inline constexpr char kSCPropNetServiceOrder[] = "ServiceOrder";
inline constexpr char kSCPropNetInterfaces[] = "Interfaces";

// Types of interfaces.
inline constexpr char kSCNetworkInterfaceType6to4[] = "6to4";
inline constexpr char kSCNetworkInterfaceTypeBluetooth[] = "Bluetooth";
inline constexpr char kSCNetworkInterfaceTypeBond[] = "Bond";
inline constexpr char kSCNetworkInterfaceTypeBridge[] = "Bridge";
inline constexpr char kSCNetworkInterfaceTypeEthernet[] = "Ethernet";
inline constexpr char kSCNetworkInterfaceTypeFireWire[] = "FireWire";
inline constexpr char kSCNetworkInterfaceTypeIEEE80211[] = "IEEE80211";
inline constexpr char kSCNetworkInterfaceTypeIPSec[] = "IPSec";
inline constexpr char kSCNetworkInterfaceTypeIrDA[] = "IrDA";
inline constexpr char kSCNetworkInterfaceTypeL2TP[] = "L2TP";
inline constexpr char kSCNetworkInterfaceTypeModem[] = "Modem";
inline constexpr char kSCNetworkInterfaceTypePPP[] = "PPP";
inline constexpr char kSCNetworkInterfaceTypePPTP[] = "PPTP";
inline constexpr char kSCNetworkInterfaceTypeSerial[] = "Serial";
inline constexpr char kSCNetworkInterfaceTypeVLAN[] = "VLAN";
inline constexpr char kSCNetworkInterfaceTypeWWAN[] = "WWAN";
inline constexpr char kSCNetworkInterfaceTypeIPv4[] = "IPv4";
inline constexpr char kSCNetworkInterfaceTypeLoopback[] = "Loopback";
inline constexpr char kSCNetworkInterfaceTypeVPN[] = "VPN";

// Types of protocols.
inline constexpr char kSCNetworkProtocolTypeDNS[] = "DNS";
inline constexpr char kSCNetworkProtocolTypeIPv4[] = "IPv4";
inline constexpr char kSCNetworkProtocolTypeIPv6[] = "IPv6";
inline constexpr char kSCNetworkProtocolTypeProxies[] = "Proxies";
inline constexpr char kSCNetworkProtocolTypeSMB[] = "SMB";

// Properties of the network as a whole.
inline constexpr char kSCDynamicStorePropNetPrimaryInterface[] = "PrimaryInterface";
inline constexpr char kSCDynamicStorePropNetPrimaryService[] = "PrimaryService";
inline constexpr char kSCDynamicStorePropNetInterfaces[] = "Interfaces";

// Others.
inline constexpr char kStoreKeyNetworkSignature[] = "NetworkSignature";

/// `SCDynamicStoreKeyCreateNetworkServiceEntity`. "<domain>/Network/Service/<serviceID>/<entity>", without the last
/// part when there is no entity.
[[nodiscard]] QK_EXPORT NSString SCDynamicStoreKeyCreateNetworkServiceEntity(const NSString& domain,
                                                                             const NSString& serviceID,
                                                                             const std::optional<NSString>& entity);

/// `SCDynamicStoreKeyCreateNetworkInterfaceEntity`. "<domain>/Network/Interface/<interfaceName>/<entity>", without the
/// last part when there is no entity.
[[nodiscard]] QK_EXPORT NSString SCDynamicStoreKeyCreateNetworkInterfaceEntity(const NSString& domain,
                                                                               const NSString& interfaceName,
                                                                               const std::optional<NSString>& entity);

/// `SCDynamicStoreKeyCreateNetworkGlobalEntity`. "<domain>/Network/Global/<entity>".
[[nodiscard]] QK_EXPORT NSString SCDynamicStoreKeyCreateNetworkGlobalEntity(const NSString& domain,
                                                                            const NSString& entity);

} // namespace qk::platform
