// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/StringTable.h"

#include <bit>
#include <cstring>
#include <limits>
#include <string_view>

namespace qk::internal {
namespace {

std::uint32_t checkOf(std::size_t hash) {
    return static_cast<std::uint32_t>(hash >> (std::numeric_limits<std::size_t>::digits / 2U));
}

} // namespace

StringTable::StringTable(const NSDictionary& entries) {
    std::size_t keyUnits = 0;
    std::size_t texts = 0;
    for (const auto& [key, value] : entries) {
        if (value.as<NSString>() != nullptr) {
            keyUnits += key.length();
            ++texts;
        }
    }
    if (texts == 0) {
        return;
    }
    keys_.reserve(keyUnits);
    entries_.reserve(texts);
    places_.resize(std::bit_ceil(texts * 2));
    for (const auto& [key, value] : entries) {
        if (const auto* const text = value.as<NSString>()) {
            entries_.push_back({keys_.size(), key.length(), {*text, *text == key}});
            keys_.append(key.units());
            insert(key.hash(), static_cast<std::uint32_t>(entries_.size()));
        }
    }
}

void StringTable::insert(std::size_t hash, std::uint32_t entry) {
    const std::size_t mask = places_.size() - 1;
    std::size_t index = hash & mask;
    while (places_[index].entry != 0) {
        index = (index + 1) & mask;
    }
    places_[index] = {checkOf(hash), entry};
}

const StringTable::Text* StringTable::find(const NSString& key) const {
    if (places_.empty()) {
        return nullptr;
    }
    const std::u16string_view units = key.units();
    const std::size_t hash = key.hash();
    const std::size_t mask = places_.size() - 1;
    for (std::size_t index = hash & mask; places_[index].entry != 0; index = (index + 1) & mask) {
        if (places_[index].check != checkOf(hash)) {
            continue;
        }
        const Entry& entry = entries_[places_[index].entry - 1];
        if (entry.keyLength == units.size() &&
            std::memcmp(keys_.data() + entry.keyBegin, units.data(), units.size() * sizeof(char16_t)) == 0) {
            return &entry.text;
        }
    }
    return nullptr;
}

} // namespace qk::internal
