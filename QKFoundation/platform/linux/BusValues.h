// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What messages of a bus hold, taken out of them.
namespace qk::platform {

struct BusEntry;
struct BusValue;
using BusList = std::vector<BusValue>;
using BusDictionary = std::vector<BusEntry>;

/// A value of any type: booleans, integers, texts (object paths and arrays of bytes too), lists (structures too),
/// dictionaries whose keys are texts. Of other types it holds nothing.
struct BusValue {
    std::variant<std::monostate, bool, std::int64_t, std::string, BusList, BusDictionary> held;

    /// What is held when it is a `T`, else null.
    template <typename T>
    [[nodiscard]] const T* as() const noexcept {
        return std::get_if<T>(&held);
    }
};

struct BusEntry {
    std::string key;
    BusValue value;
};

/// The value under `key` when it is a `T`; null when there is none, or of another type.
template <typename T>
[[nodiscard]] const T* find(const BusDictionary& dictionary, std::string_view key) {
    for (const BusEntry& entry : dictionary) {
        if (entry.key == key) {
            return entry.value.as<T>();
        }
    }
    return nullptr;
}

/// As `find`; `fallback` in the place of null.
template <typename T>
[[nodiscard]] T findOr(const BusDictionary& dictionary, std::string_view key, T fallback) {
    const T* found = find<T>(dictionary, key);
    return found != nullptr ? *found : fallback;
}

} // namespace qk::platform
