// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/MemoryIORegistry.h"
#include "QKFoundation/platform/memory/MemorySystemConfiguration.h"
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace qk::platform::memory {

/// A network service and its interface: Ethernet, built in, up, with an address by DHCP. What a list or an optional
/// leaves empty is not there.
struct MemoryNetworkService {
    NSString name = "Ethernet";
    std::optional<NSString> serviceID = std::nullopt; ///< a UUID in capitals; nothing: one is made up
    bool enabled = true;
    NSString bsdName = "eth0";
    NSString interfaceType = kSCNetworkInterfaceTypeEthernet;
    NSString hardwareAddress = "02:00:00:00:00:01";
    TransferUnits transferUnits{1500, 68, 9000};
    bool builtin = true;
    bool linkActive = true;
    std::int64_t linkSpeed = 1'000'000'000;
    std::optional<NSString> vendor = NSString("Example");
    std::optional<NSString> model = NSString("Gigabit Network Connection");

    NSString ipv4ConfigMethod = kSCValNetIPv4ConfigMethodDHCP;
    std::vector<NSString> ipv4Addresses{"192.0.2.10"};
    std::vector<NSString> subnetMasks{"255.255.255.0"};
    std::vector<NSString> broadcastAddresses{"192.0.2.255"};
    std::optional<NSString> ipv4Router = NSString("192.0.2.1");

    NSString ipv6ConfigMethod = kSCValNetIPv6ConfigMethodAutomatic;
    std::vector<NSString> ipv6Addresses{"2001:db8::10"};
    std::vector<std::int32_t> prefixLengths{64};
    std::optional<NSString> ipv6Router = NSString("fe80::1");

    std::vector<NSString> nameServers{"192.0.2.53"};
    std::optional<NSString> domainName = NSString("example.com");
    std::optional<NSString> wirelessNetwork = std::nullopt; ///< its name; the interface has no radio without
};

/// Describes the network of a machine in a few lines:
///
///     memory::Machine machine;
///     machine.network.addService({.bsdName = "eth0"});
///     machine.network.addService({.name = "Dock", .bsdName = "eth1", .builtin = false});
///
/// Threads: any, at the same time.
class QK_EXPORT MemoryNetwork {
public:
    /// Tells both, which outlive it.
    MemoryNetwork(MemorySystemConfiguration& systemConfiguration, MemoryIORegistry& ioRegistry)
        : systemConfiguration_(systemConfiguration), ioRegistry_(ioRegistry) {}

    /// Adds the service to the dynamic store, to the preferences and, unless it knows the name, its interface to the
    /// registry. Returns the service's identifier.
    NSString addService(const MemoryNetworkService& service = {});

private:
    void addToStore(const MemoryNetworkService& service, const NSString& serviceID);
    void addToPreferences(const MemoryNetworkService& service, const NSString& serviceID);
    void addToRegistry(const MemoryNetworkService& service);

    MemorySystemConfiguration& systemConfiguration_;
    MemoryIORegistry& ioRegistry_;
    std::mutex mutex_;
    std::size_t count_ = 0;
};

} // namespace qk::platform::memory
