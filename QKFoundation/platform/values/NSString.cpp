// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "QKFoundation/platform/values/NSStringStorage.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>

namespace qk {

using internal::StorageBuilder;

namespace {

/// The units of a text that is known to be ASCII.
NSString fromASCII(std::string_view text) {
    StorageBuilder builder(text.size());
    std::copy(text.begin(), text.end(), builder.units());
    return NSString::adopting(builder.finish(text.size()));
}

CFStringRef storageOf(std::u16string_view units) {
    if (units.empty()) {
        return &internal::kEmptyStorage;
    }
    StorageBuilder builder(units.size());
    std::memcpy(builder.units(), units.data(), units.size() * sizeof(char16_t));
    return builder.finish(units.size());
}

template <typename Integer>
NSString fromDigits(Integer number) {
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return fromASCII({digits, static_cast<std::size_t>(end - digits)});
}

/// The number of units that `left` and `right` have in common at their heads.
std::size_t commonPrefix(std::u16string_view left, std::u16string_view right) {
    constexpr std::size_t kBlock = 32;
    const std::size_t limit = std::min(left.size(), right.size());
    std::size_t index = 0;
    while (limit - index >= kBlock &&
           std::memcmp(left.data() + index, right.data() + index, kBlock * sizeof(char16_t)) == 0) {
        index += kBlock;
    }
    while (index < limit && left[index] == right[index]) {
        ++index;
    }
    return index;
}

} // namespace

NSString::NSString(std::u16string_view units) : storage_(storageOf(units)) {}

NSString NSString::fromInteger(std::int64_t number) {
    return fromDigits(number);
}

NSString NSString::fromUnsignedInteger(std::uint64_t number) {
    return fromDigits(number);
}

std::size_t NSString::hash() const {
    std::size_t hash = storage_->hash.load(std::memory_order_relaxed);
    if (hash == 0) {
        hash = std::hash<std::u16string_view>()(units());
        storage_->hash.store(hash, std::memory_order_relaxed); // every thread computes the same
    }
    return hash;
}

NSComparisonResult NSString::compare(const NSString& other) const {
    const std::strong_ordering order = *this <=> other;
    return order < 0   ? NSComparisonResult::NSOrderedAscending
           : order > 0 ? NSComparisonResult::NSOrderedDescending
                       : NSComparisonResult::NSOrderedSame;
}

bool NSString::hasUnitsOf(const NSString& other) const {
    return std::memcmp(units().data(), other.units().data(), length() * sizeof(char16_t)) == 0;
}

std::strong_ordering operator<=>(const NSString& left, const NSString& right) {
    const std::u16string_view leftUnits = left.units();
    const std::u16string_view rightUnits = right.units();
    const std::size_t common = commonPrefix(leftUnits, rightUnits);
    if (common == leftUnits.size() || common == rightUnits.size()) {
        return leftUnits.size() <=> rightUnits.size();
    }
    return leftUnits[common] <=> rightUnits[common];
}

NSString NSString::substringFromIndex(std::size_t index) const {
    return substring(index, length());
}

NSString NSString::substringToIndex(std::size_t index) const {
    return substring(0, index);
}

NSString NSString::substring(std::size_t index, std::size_t count) const {
    if (index >= length()) {
        return {};
    }
    if (index == 0 && count >= length()) {
        return *this;
    }
    return NSString(units().substr(index, count));
}

NSString NSString::concatenated(std::initializer_list<std::u16string_view> pieces) {
    std::size_t length = 0;
    for (const std::u16string_view piece : pieces) {
        length += piece.size();
    }
    if (length == 0) {
        return {};
    }
    StorageBuilder builder(length);
    char16_t* end = builder.units();
    for (const std::u16string_view piece : pieces) {
        end = std::copy(piece.begin(), piece.end(), end);
    }
    return adopting(builder.finish(length));
}

} // namespace qk
