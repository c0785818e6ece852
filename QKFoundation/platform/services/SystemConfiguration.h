// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/Value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace qk::platform {

/// `SCDynamicStoreRef`. A connection to the dynamic store, which tells the configuration and the present state of the
/// network: values, dictionaries as a rule, under keys that are paths ("SystemConfigurationSchema.h"). Closed when the
/// last holder lets go. Threads: any, at the same time.
class QK_EXPORT DynamicStore {
public:
    DynamicStore() = default;
    DynamicStore(const DynamicStore&) = delete;
    DynamicStore& operator=(const DynamicStore&) = delete;
    virtual ~DynamicStore();

    /// `SCDynamicStoreCopyValue`. The value under exactly that key; nothing when there is none.
    [[nodiscard]] virtual std::optional<Value> copyValue(const NSString& key) const = 0;

    /// `SCDynamicStoreCopyKeyList`. The keys that match `pattern`, a POSIX extended regular expression that must match
    /// the whole key, in the store's order; nothing when the list cannot be had.
    [[nodiscard]] virtual std::optional<std::vector<NSString>> copyKeyList(const NSString& pattern) const = 0;
};

/// The limits of what an interface sends at once, in bytes; -1 for one that cannot be told.
struct TransferUnits {
    std::int32_t current = 0;
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
};

/// `SCNetworkInterface`: an interface as the network preferences describe it. What they do not tell is nothing.
struct SCNetworkInterface {
    std::optional<NSString> bsdName;               ///< the system's name: "eth0"
    std::optional<NSString> localizedDisplayName;  ///< what people call it: "Ethernet"
    std::optional<NSString> interfaceType;         ///< one of `kSCNetworkInterfaceType...`
    std::optional<NSString> hardwareAddressString; ///< "52:54:00:12:34:56"
    std::optional<NSArray> supportedInterfaceTypes;
    std::optional<NSArray> supportedProtocolTypes;
    std::optional<TransferUnits> transferUnits; ///< `SCNetworkInterfaceCopyMTU`; nothing when the call fails
    std::optional<NSDictionary> activeMedia;    ///< `SCNetworkInterfaceCopyMediaOptions`, the active ones; keys are
                                                ///< `kSCPropNetEthernetMediaSubType`, `...MediaOptions`
};
using SCNetworkInterfaceRef = std::shared_ptr<const SCNetworkInterface>;

/// `SCNetworkService`: a configured network service.
struct SCNetworkService {
    std::uint8_t enabled = 0; ///< `SCNetworkServiceGetEnabled`: 1 for one that is
    std::optional<NSString> name;
    std::optional<NSString> serviceID;
    SCNetworkInterfaceRef interface; ///< null for one without
};
using SCNetworkServiceRef = std::shared_ptr<const SCNetworkService>;

/// `SCPreferencesRef` of the network. Threads: any, at the same time.
class QK_EXPORT NetworkPreferences {
public:
    NetworkPreferences() = default;
    NetworkPreferences(const NetworkPreferences&) = delete;
    NetworkPreferences& operator=(const NetworkPreferences&) = delete;
    virtual ~NetworkPreferences();

    /// `SCNetworkServiceCopyAll`. All services in the preferences' order, null entries among them; nothing when they
    /// cannot be had.
    [[nodiscard]] virtual std::optional<std::vector<SCNetworkServiceRef>> copyAllServices() const = 0;
};

/// What `SystemConfiguration::beginReading` returns.
class QK_EXPORT ConfigurationReading {
public:
    ConfigurationReading() = default;
    ConfigurationReading(const ConfigurationReading&) = delete;
    ConfigurationReading& operator=(const ConfigurationReading&) = delete;
    virtual ~ConfigurationReading();
};

/// The system's configuration: its dynamic store and its network preferences. Threads: any, at the same time.
class QK_EXPORT SystemConfiguration {
public:
    SystemConfiguration() = default;
    SystemConfiguration(const SystemConfiguration&) = delete;
    SystemConfiguration& operator=(const SystemConfiguration&) = delete;
    virtual ~SystemConfiguration();

    /// `SCDynamicStoreCopyComputerName`. The computer's name in the store; nothing when it holds none.
    [[nodiscard]] virtual std::optional<NSString> copyComputerName() const = 0;

    /// `SCDynamicStoreCreate`. A connection to the store under the caller's `name`, which may be missing; null when the
    /// system refuses. What it answers is what held when it was opened, or later.
    [[nodiscard]] virtual std::shared_ptr<const DynamicStore>
    createDynamicStore(const std::optional<NSString>& name) const = 0;

    /// `SCPreferencesCreate` of the system's own preferences, under the caller's `name`; null when they cannot be read.
    [[nodiscard]] virtual std::shared_ptr<const NetworkPreferences> createPreferences(const NSString& name) const = 0;

    /// Until the result is destroyed, which happens on this thread, what this thread asks of the store, the preferences
    /// and the registry of network interfaces may come from one look at the machine, so that an operation of many reads
    /// costs one. Readings nest. May be null: each read looks for itself.
    [[nodiscard]] virtual std::unique_ptr<ConfigurationReading> beginReading() const = 0;
};

} // namespace qk::platform
