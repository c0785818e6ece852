// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <memory>
#include <optional>
#include <vector>

namespace qk::platform::memory {

/// A dynamic store and network preferences with what they were told: at first, an empty store and no services. They
/// also tell what they were asked. Threads: any, at the same time.
class QK_EXPORT MemorySystemConfiguration final : public SystemConfiguration {
public:
    MemorySystemConfiguration();
    ~MemorySystemConfiguration() override;

    /// The computer's name in the store; nothing for none.
    void setComputerName(const std::optional<NSString>& name);

    /// The store has `value` under `key`; nothing takes the key away. Keys are listed in the order in which they came.
    void setStoreValue(const NSString& key, const std::optional<Value>& value);

    /// The preferences list `service` behind the others; null for an entry that is none.
    void addService(SCNetworkServiceRef service);

    /// The preferences list these services; nothing when they have no list.
    void setServices(std::optional<std::vector<SCNetworkServiceRef>> services);

    // What fails from now on.
    void refuseConnections(bool refuse);
    void refuseKeyLists(bool refuse);
    void refusePreferences(bool refuse);

    // What was asked, in order, since `forgetRequests`.
    [[nodiscard]] std::vector<std::optional<NSString>> connectionNames() const;
    [[nodiscard]] std::vector<NSString> keysRead() const;
    [[nodiscard]] std::vector<NSString> patterns() const;
    [[nodiscard]] std::vector<NSString> preferencesNames() const;
    void forgetRequests();

    /// How many readings have begun and not ended.
    [[nodiscard]] std::size_t openReadings() const;

    /// How many outermost readings have begun since `forgetRequests`.
    [[nodiscard]] std::size_t readingsBegun() const;

    [[nodiscard]] std::optional<NSString> copyComputerName() const override;
    [[nodiscard]] std::shared_ptr<const DynamicStore>
    createDynamicStore(const std::optional<NSString>& name) const override;
    [[nodiscard]] std::shared_ptr<const NetworkPreferences> createPreferences(const NSString& name) const override;

    /// A mark only: what is told meanwhile is seen at once.
    [[nodiscard]] std::unique_ptr<ConfigurationReading> beginReading() const override;

private:
    struct State;
    class Store;
    class Preferences;
    class Reading;

    std::shared_ptr<State> state_; // connections may outlive this object
};

} // namespace qk::platform::memory
