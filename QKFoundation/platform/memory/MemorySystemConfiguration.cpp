// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemorySystemConfiguration.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <mutex>
#include <regex>
#include <string>
#include <utility>

namespace qk::platform::memory {
namespace {

// The matcher calls itself for each character, so a key has to end somewhere.
constexpr std::size_t kLongestListedKey = 1000;

} // namespace

struct MemorySystemConfiguration::State {
    struct Stored {
        std::size_t place; // in the order of the keys
        Value value;
    };

    mutable std::mutex mutex;
    std::optional<NSString> computerName;
    std::map<NSString, Stored> store;
    std::size_t nextPlace = 0;
    std::optional<std::vector<SCNetworkServiceRef>> services{std::in_place};
    bool refusesConnections = false;
    bool refusesKeyLists = false;
    bool refusesPreferences = false;
    std::vector<std::optional<NSString>> connectionNames;
    std::vector<NSString> keysRead;
    std::vector<NSString> patterns;
    std::vector<NSString> preferencesNames;
    std::size_t openReadings = 0;
    std::size_t readingsBegun = 0;

    template <typename T>
    [[nodiscard]] T get(T State::*member) const {
        const std::scoped_lock lock(mutex);
        return this->*member;
    }
    template <typename T>
    void set(T State::*member, T value) {
        const std::scoped_lock lock(mutex);
        this->*member = std::move(value);
    }

    [[nodiscard]] std::vector<NSString> keysInOrder() const {
        std::vector<std::pair<std::size_t, NSString>> places;
        places.reserve(store.size());
        for (const auto& [key, stored] : store) {
            places.emplace_back(stored.place, key);
        }
        std::sort(places.begin(), places.end());
        std::vector<NSString> keys;
        keys.reserve(places.size());
        for (auto& [place, key] : places) {
            keys.push_back(std::move(key));
        }
        return keys;
    }
};

class MemorySystemConfiguration::Store final : public DynamicStore {
public:
    explicit Store(std::shared_ptr<State> state) : state_(std::move(state)) {}

    [[nodiscard]] std::optional<Value> copyValue(const NSString& key) const override {
        const std::scoped_lock lock(state_->mutex);
        state_->keysRead.push_back(key);
        const auto found = state_->store.find(key);
        return found != state_->store.end() ? std::optional(found->second.value) : std::nullopt;
    }

    [[nodiscard]] std::optional<std::vector<NSString>> copyKeyList(const NSString& pattern) const override {
        const std::scoped_lock lock(state_->mutex);
        state_->patterns.push_back(pattern);
        if (state_->refusesKeyLists) {
            return std::nullopt;
        }
        try {
            const std::regex expression(pattern.utf8Lossy(), std::regex::extended);
            std::vector<NSString> keys = state_->keysInOrder();
            std::erase_if(keys, [&](const NSString& key) {
                return key.length() > kLongestListedKey || !std::regex_match(key.utf8Lossy(), expression);
            });
            return keys;
        } catch (const std::regex_error&) {
            return std::nullopt;
        }
    }

private:
    std::shared_ptr<State> state_;
};

class MemorySystemConfiguration::Preferences final : public NetworkPreferences {
public:
    explicit Preferences(std::shared_ptr<State> state) : state_(std::move(state)) {}

    [[nodiscard]] std::optional<std::vector<SCNetworkServiceRef>> copyAllServices() const override {
        return state_->get(&State::services);
    }

private:
    std::shared_ptr<State> state_;
};

class MemorySystemConfiguration::Reading final : public ConfigurationReading {
public:
    explicit Reading(std::shared_ptr<State> state) : state_(std::move(state)) {
        const std::scoped_lock lock(state_->mutex);
        if (state_->openReadings++ == 0) {
            ++state_->readingsBegun;
        }
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() override {
        const std::scoped_lock lock(state_->mutex);
        --state_->openReadings;
    }

private:
    std::shared_ptr<State> state_;
};

MemorySystemConfiguration::MemorySystemConfiguration() : state_(std::make_shared<State>()) {}

MemorySystemConfiguration::~MemorySystemConfiguration() = default;

void MemorySystemConfiguration::setComputerName(const std::optional<NSString>& name) {
    state_->set(&State::computerName, name);
}

void MemorySystemConfiguration::setStoreValue(const NSString& key, const std::optional<Value>& value) {
    const std::scoped_lock lock(state_->mutex);
    if (!value.has_value()) {
        state_->store.erase(key);
        return;
    }
    const auto [entry, isNew] = state_->store.try_emplace(key, State::Stored{state_->nextPlace, *value});
    if (isNew) {
        ++state_->nextPlace;
    } else {
        entry->second.value = *value;
    }
}

void MemorySystemConfiguration::addService(SCNetworkServiceRef service) {
    const std::scoped_lock lock(state_->mutex);
    if (!state_->services.has_value()) {
        state_->services.emplace();
    }
    state_->services->push_back(std::move(service));
}

void MemorySystemConfiguration::setServices(std::optional<std::vector<SCNetworkServiceRef>> services) {
    state_->set(&State::services, std::move(services));
}

void MemorySystemConfiguration::refuseConnections(bool refuse) {
    state_->set(&State::refusesConnections, refuse);
}

void MemorySystemConfiguration::refuseKeyLists(bool refuse) {
    state_->set(&State::refusesKeyLists, refuse);
}

void MemorySystemConfiguration::refusePreferences(bool refuse) {
    state_->set(&State::refusesPreferences, refuse);
}

std::vector<std::optional<NSString>> MemorySystemConfiguration::connectionNames() const {
    return state_->get(&State::connectionNames);
}

std::vector<NSString> MemorySystemConfiguration::keysRead() const {
    return state_->get(&State::keysRead);
}

std::vector<NSString> MemorySystemConfiguration::patterns() const {
    return state_->get(&State::patterns);
}

std::vector<NSString> MemorySystemConfiguration::preferencesNames() const {
    return state_->get(&State::preferencesNames);
}

void MemorySystemConfiguration::forgetRequests() {
    const std::scoped_lock lock(state_->mutex);
    state_->connectionNames.clear();
    state_->keysRead.clear();
    state_->patterns.clear();
    state_->preferencesNames.clear();
    state_->readingsBegun = 0;
}

std::size_t MemorySystemConfiguration::openReadings() const {
    return state_->get(&State::openReadings);
}

std::size_t MemorySystemConfiguration::readingsBegun() const {
    return state_->get(&State::readingsBegun);
}

std::optional<NSString> MemorySystemConfiguration::copyComputerName() const {
    return state_->get(&State::computerName);
}

std::shared_ptr<const DynamicStore>
MemorySystemConfiguration::createDynamicStore(const std::optional<NSString>& name) const {
    const std::scoped_lock lock(state_->mutex);
    state_->connectionNames.push_back(name);
    return state_->refusesConnections ? nullptr : std::make_shared<Store>(state_);
}

std::shared_ptr<const NetworkPreferences> MemorySystemConfiguration::createPreferences(const NSString& name) const {
    const std::scoped_lock lock(state_->mutex);
    state_->preferencesNames.push_back(name);
    return state_->refusesPreferences ? nullptr : std::make_shared<Preferences>(state_);
}

std::unique_ptr<ConfigurationReading> MemorySystemConfiguration::beginReading() const {
    return std::make_unique<Reading>(state_);
}

} // namespace qk::platform::memory
