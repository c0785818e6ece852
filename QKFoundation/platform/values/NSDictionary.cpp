// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSDictionary.h"

#include "QKFoundation/platform/values/Collections.h"

#include <algorithm>
#include <iterator>

namespace qk {

namespace {

using internal::CollectionBuilder;
using Entry = NSDictionary::Entry;

// So many keys are compared for equality, which mostly ends at their lengths, sooner than for their order.
constexpr std::size_t kFew = 8;

bool keyIsBelow(const Entry& left, const Entry& right) {
    return left.first < right.first;
}

/// Puts `entries` in ascending order, with the last one of each key.
void arrange(CollectionBuilder<Entry>& entries) {
    const auto isNotBelow = [](const Entry& left, const Entry& right) { return !keyIsBelow(left, right); };
    if (std::adjacent_find(entries.begin(), entries.end(), isNotBelow) == entries.end()) {
        return; // as they mostly come: each key above the one before
    }
    std::stable_sort(entries.begin(), entries.end(), keyIsBelow);
    const auto sameKey = [](const Entry& left, const Entry& right) { return left.first == right.first; };
    // From behind, "unique" keeps the last of a run, at the end.
    const std::reverse_iterator last(entries.end());
    const std::reverse_iterator first(entries.begin());
    Entry* const kept = std::unique(last, first, sameKey).base();
    entries.truncate(static_cast<std::size_t>(std::move(kept, entries.end(), entries.begin()) - entries.begin()));
}

} // namespace

NSDictionary::NSDictionary(std::initializer_list<Entry> entries) : NSDictionary(CollectionBuilder<Entry>(entries)) {}

NSDictionary::NSDictionary(std::vector<Entry> entries) : NSDictionary(CollectionBuilder<Entry>(std::move(entries))) {}

NSDictionary::NSDictionary(CollectionBuilder<Entry>&& entries) {
    arrange(entries);
    entries_ = entries.finish();
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

bool operator==(const NSDictionary& left, const NSDictionary& right) {
    return left.begin() == right.begin() || (left.count() == right.count() && internal::areEqual(left, right));
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
