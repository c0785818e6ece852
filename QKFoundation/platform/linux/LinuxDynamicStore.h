// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkServices.h"
#include "QKFoundation/platform/linux/NetworkValues.h"
#include "QKFoundation/platform/linux/StoreKey.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::platform {

/// The dynamic store over one look at the network. No entry is made before it is asked for. Keys are listed interface
/// by interface and service by service, in the order of the links' indexes. Threads: any, at the same time.
class LinuxDynamicStore final : public DynamicStore {
public:
    /// `variables` name the proxies.
    LinuxDynamicStore(std::shared_ptr<const NetworkServices> services, Variables variables)
        : services_(std::move(services)), variables_(std::move(variables)) {}

    [[nodiscard]] std::optional<Value> copyValue(const NSString& key) const override;
    [[nodiscard]] std::optional<std::vector<NSString>> copyKeyList(const NSString& pattern) const override;

private:
    using Entry = std::optional<NSDictionary>;

    [[nodiscard]] Entry dictionary(const NSString& key) const;
    [[nodiscard]] Entry interfaceState(const StoreKey& key) const;
    [[nodiscard]] Entry serviceSetup(const NetworkService& service, StoreKey::Entity entity) const;
    [[nodiscard]] Entry serviceState(const NetworkService& service, StoreKey::Entity entity) const;
    [[nodiscard]] Entry globalSetup(StoreKey::Entity entity) const;
    [[nodiscard]] Entry globalState(StoreKey::Entity entity) const;
    [[nodiscard]] Entry globalRoute(AddressFamily family) const;
    [[nodiscard]] Entry allInterfaces() const;
    [[nodiscard]] std::vector<NSString> allKeys() const;

    /// What `make` makes of a link's addresses.
    template <typename Make>
    [[nodiscard]] Entry ofAddresses(const NetworkLink& link, AddressFamily family, Make make) const;

    // Whoever reads an interface's state reads its service's next.
    struct Latest {
        std::int32_t link = 0;
        AddressFamily family = AddressFamily::IPv4;
        values::AddressValues values;
    };

    std::shared_ptr<const NetworkServices> services_;
    Variables variables_;
    mutable std::mutex mutex_; // of what follows
    mutable Latest latest_;
};

} // namespace qk::platform
