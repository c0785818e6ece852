// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSCharacterSet.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace qk {
namespace {

constexpr char16_t kFirstOther = 0x80;
constexpr std::size_t kOtherCount = 0x10000 - kFirstOther;
constexpr unsigned kBitsPerWord = 64;

std::u16string_view listed(const std::shared_ptr<const std::u16string>& others) noexcept {
    return others != nullptr ? std::u16string_view(*others) : std::u16string_view();
}

// Of two ascending texts without repetitions.
bool haveCommonUnit(std::u16string_view left, std::u16string_view right) noexcept {
    while (!left.empty() && !right.empty() && left.front() != right.front()) {
        (left.front() < right.front() ? left : right).remove_prefix(1);
    }
    return !left.empty() && !right.empty();
}

} // namespace

NSCharacterSet NSCharacterSet::characterSetWithCharactersInString(const NSString& string) {
    NSCharacterSet set;
    std::u16string others;
    for (const char16_t unit : string.units()) {
        if (unit < kFirstOther) {
            set.ascii_[unit / kBitsPerWord] |= std::uint64_t{1} << (unit % kBitsPerWord);
        } else {
            others.push_back(unit);
        }
    }
    if (!others.empty()) {
        std::ranges::sort(others);
        others.erase(std::ranges::unique(others).begin(), others.end());
        set.listedOthers_ = std::make_shared<const std::u16string>(std::move(others));
    }
    return set;
}

NSCharacterSet NSCharacterSet::invertedSet() const {
    NSCharacterSet inverted = *this;
    for (std::uint64_t& word : inverted.ascii_) {
        word = ~word;
    }
    inverted.othersInverted_ = !othersInverted_;
    return inverted;
}

bool NSCharacterSet::characterIsMember(char16_t unit) const noexcept {
    if (unit < kFirstOther) {
        return ((ascii_[unit / kBitsPerWord] >> (unit % kBitsPerWord)) & 1U) != 0;
    }
    return std::ranges::binary_search(listed(listedOthers_), unit) != othersInverted_;
}

bool operator==(const NSCharacterSet& left, const NSCharacterSet& right) noexcept {
    if (left.ascii_ != right.ascii_) {
        return false;
    }
    const std::u16string_view leftOthers = listed(left.listedOthers_);
    const std::u16string_view rightOthers = listed(right.listedOthers_);
    if (left.othersInverted_ == right.othersInverted_) {
        return leftOthers == rightOthers;
    }
    // One lists what it has and the other what it lacks: the same set when the lists share out all units.
    return leftOthers.size() + rightOthers.size() == kOtherCount && !haveCommonUnit(leftOthers, rightOthers);
}

std::optional<std::size_t> rangeOfCharacterFromSet(const NSString& string, const NSCharacterSet& set) {
    const std::u16string_view units = string.units();
    const auto found = std::ranges::find_if(units, [&](char16_t unit) { return set.characterIsMember(unit); });
    return found != units.end() ? std::optional(static_cast<std::size_t>(found - units.begin())) : std::nullopt;
}

std::vector<NSString> componentsSeparatedByCharactersInSet(const NSString& string, const NSCharacterSet& set) {
    const std::u16string_view units = string.units();
    std::vector<NSString> pieces;
    std::size_t start = 0;
    for (std::size_t index = 0; index < units.size(); ++index) {
        if (set.characterIsMember(units[index])) {
            pieces.emplace_back(units.substr(start, index - start));
            start = index + 1;
        }
    }
    pieces.push_back(start == 0 ? string : NSString(units.substr(start)));
    return pieces;
}

NSString stringByRemovingCharactersInSet(const NSString& string, const NSCharacterSet& set) {
    const auto first = rangeOfCharacterFromSet(string, set);
    if (!first.has_value()) {
        return string;
    }
    const std::u16string_view units = string.units();
    std::u16string kept;
    kept.reserve(units.size());
    std::ranges::copy_if(units, std::back_inserter(kept), [&](char16_t unit) { return !set.characterIsMember(unit); });
    return NSString(kept);
}

} // namespace qk
