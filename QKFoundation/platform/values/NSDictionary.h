// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSCollectionStorage.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace qk {

class Value;

namespace internal {
template <typename Element>
class CollectionBuilder;
}

/// Immutable values by string key, in ascending order of the keys. Copying shares them.
/// Threads: may be read, copied and destroyed anywhere at the same time.
class QK_EXPORT NSDictionary {
public:
    using Entry = std::pair<NSString, Value>;

    /// No entries. Allocates nothing.
    NSDictionary() noexcept = default;
    NSDictionary(std::initializer_list<Entry> entries);

    /// Of entries with the same key the last one counts.
    explicit NSDictionary(std::vector<Entry> entries);

    /// Of what a builder holds, which is empty then.
    explicit NSDictionary(internal::CollectionBuilder<Entry>&& entries);

    [[nodiscard]] std::size_t count() const noexcept { return entries_.count(); }
    [[nodiscard]] bool isEmpty() const noexcept { return count() == 0; }

    /// `objectForKey:`. The value for `key`, null when there is none. Valid as long as this dictionary or a copy of it
    /// lives.
    [[nodiscard]] const Value* objectForKey(const NSString& key) const;

    /// The value for `key` when it is a `T`; null when there is none or it is of another kind.
    template <typename T>
    [[nodiscard]] const T* get(const NSString& key) const;

    /// `allKeys`, ascending.
    [[nodiscard]] std::vector<NSString> allKeys() const;

    /// All entries, ascending by key. Valid as long as this dictionary or a copy of it lives.
    [[nodiscard]] std::span<const Entry> entries() const noexcept;
    [[nodiscard]] const Entry* begin() const noexcept { return entries_.data(); }
    [[nodiscard]] const Entry* end() const noexcept;

    /// The number of entries: equal dictionaries have equal counts, and none is walked for its hash.
    [[nodiscard]] std::size_t hash() const noexcept { return count(); }
    QK_EXPORT friend bool operator==(const NSDictionary& left, const NSDictionary& right);

private:
    internal::Elements<Entry> entries_;
};

/// A dictionary under construction. Threads: one at a time.
class QK_EXPORT NSMutableDictionary {
public:
    NSMutableDictionary() noexcept;
    explicit NSMutableDictionary(const NSDictionary& entries);
    NSMutableDictionary(const NSMutableDictionary&) = delete;
    NSMutableDictionary& operator=(const NSMutableDictionary&) = delete;
    NSMutableDictionary(NSMutableDictionary&&) noexcept;
    NSMutableDictionary& operator=(NSMutableDictionary&&) noexcept;
    ~NSMutableDictionary();

    /// `setObject:forKey:`. Replaces a value that stands under `key`.
    void setObject(Value value, const NSString& key);

    /// `addEntriesFromDictionary:`. Replaces values that stand under the same keys.
    void addEntriesFromDictionary(const NSDictionary& other);

    /// `removeObjectForKey:`. Does nothing when there is no such key.
    void removeObjectForKey(const NSString& key);

    [[nodiscard]] std::size_t count() const noexcept;
    [[nodiscard]] const Value* objectForKey(const NSString& key) const;

    /// A dictionary of the entries so far.
    [[nodiscard]] NSDictionary copy() const;

private:
    [[nodiscard]] std::map<NSString, Value>& entries();

    std::unique_ptr<std::map<NSString, Value>> entries_; // null while there are none
};

} // namespace qk

#include "QKFoundation/platform/values/Value.h" // the element type, which holds dictionaries itself
