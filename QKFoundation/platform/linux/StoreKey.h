// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace qk::platform {

/// A key of the dynamic store, taken apart.
struct StoreKey {
    enum class Domain : std::uint8_t { Setup, State };
    enum class Subject : std::uint8_t { Service, Interface, Global, AllInterfaces };
    enum class Entity : std::uint8_t { None, Interface, IPv4, IPv6, Proxies, DHCP, DNS, Link, AirPort };

    Domain domain;
    Subject subject;
    std::u16string_view name; ///< of the service or interface; part of the key
    Entity entity;

    friend bool operator==(const StoreKey&, const StoreKey&) = default;
};

/// Nothing for a key under which this store never holds anything.
[[nodiscard]] std::optional<StoreKey> storeKey(std::u16string_view key);

} // namespace qk::platform
