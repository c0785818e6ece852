// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSDictionary.h"

#include "QKFoundation/platform/values/Collections.h"

#include <algorithm>

namespace qk {

namespace {

using Entry = NSDictionary::Entry;

// So many keys are compared for equality, which mostly ends at their lengths, sooner than for their order.
constexpr std::size_t kFew = 8;

bool keyIsBelow(const Entry& left, const Entry& right) {
    return left.first < right.first;
}

/// `entries` in ascending order, with the last one of each key.
std::vector<Entry> inOrder(std::vector<Entry> entries) {
    const auto isNotBelow = [](const Entry& left, const Entry& right) { return !keyIsBelow(left, right); };
    if (std::adjacent_find(entries.begin(), entries.end(), isNotBelow) == entries.end()) {
        return entries; // as they mostly come: each key above the one before
    }
    std::stable_sort(entries.begin(), entries.end(), keyIsBelow);
    const auto sameKey = [](const Entry& left, const Entry& right) { return left.first == right.first; };
    // From behind, "unique" keeps the last of a run, at the end of the vector.
    const auto kept = std::unique(entries.rbegin(), entries.rend(), sameKey).base();
    entries.erase(entries.begin(), kept);
    return entries;
}

} // namespace

NSDictionary::NSDictionary(std::initializer_list<Entry> entries) : NSDictionary(std::vector<Entry>(entries)) {}

NSDictionary::NSDictionary(std::vector<Entry> entries)
    : entries_(internal::shareEntries(inOrder(std::move(entries)))) {}

std::size_t NSDictionary::count() const noexcept {
    return entries_ == nullptr ? 0 : entries_->size();
}

const Value* NSDictionary::objectForKey(const NSString& key) const {
    if (count() <= kFew) {
        const Entry* found = std::find_if(begin(), end(), [&key](const Entry& entry) { return entry.first == key; });
        return found != end() ? &found->second : nullptr;
    }
    const auto isBelow = [](const Entry& entry, const NSString& wanted) { return entry.first < wanted; };
    const Entry* found = std::lower_bound(begin(), end(), key, isBelow);
    return found != end() && found->first == key ? &found->second : nullptr;
}

std::vector<NSString> NSDictionary::allKeys() const {
    std::vector<NSString> keys;
    keys.reserve(count());
    for (const Entry& entry : *this) {
        keys.push_back(entry.first);
    }
    return keys;
}

std::span<const Entry> NSDictionary::entries() const noexcept {
    return entries_ == nullptr ? std::span<const Entry>() : std::span<const Entry>(*entries_);
}

const Entry* NSDictionary::begin() const noexcept {
    return entries().data();
}

const Entry* NSDictionary::end() const noexcept {
    return entries().data() + count();
}

bool operator==(const NSDictionary& left, const NSDictionary& right) {
    return left.entries_ == right.entries_ || (left.count() == right.count() && internal::areEqual(left, right));
}

NSMutableDictionary::NSMutableDictionary() noexcept = default;

NSMutableDictionary::NSMutableDictionary(const NSDictionary& entries) {
    addEntriesFromDictionary(entries);
}

NSMutableDictionary::NSMutableDictionary(NSMutableDictionary&&) noexcept = default;
NSMutableDictionary& NSMutableDictionary::operator=(NSMutableDictionary&&) noexcept = default;
NSMutableDictionary::~NSMutableDictionary() = default;

std::map<NSString, Value>& NSMutableDictionary::entries() {
    if (entries_ == nullptr) {
        entries_ = std::make_unique<std::map<NSString, Value>>();
    }
    return *entries_;
}

void NSMutableDictionary::setObject(Value value, const NSString& key) {
    entries().insert_or_assign(key, std::move(value));
}

void NSMutableDictionary::addEntriesFromDictionary(const NSDictionary& other) {
    for (const auto& [key, value] : other) {
        entries().insert_or_assign(key, value);
    }
}

void NSMutableDictionary::removeObjectForKey(const NSString& key) {
    if (entries_ != nullptr) {
        entries_->erase(key);
    }
}

std::size_t NSMutableDictionary::count() const noexcept {
    return entries_ == nullptr ? 0 : entries_->size();
}

const Value* NSMutableDictionary::objectForKey(const NSString& key) const {
    if (entries_ == nullptr) {
        return nullptr;
    }
    const auto found = entries_->find(key);
    return found == entries_->end() ? nullptr : &found->second;
}

NSDictionary NSMutableDictionary::copy() const {
    return entries_ == nullptr ? NSDictionary() : NSDictionary(std::vector<Entry>(entries_->begin(), entries_->end()));
}

} // namespace qk
