// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qk::internal {

/// The texts of a string table by key. Threads: any, at the same time; finding takes no lock and allocates nothing.
class StringTable {
public:
    struct Text {
        NSString text;
        bool equalsKey;
    };

    /// No texts.
    StringTable() = default;

    /// The entries whose values are strings; the others count as missing.
    explicit StringTable(const NSDictionary& entries);

    /// The text of `key`, valid as long as the table lives; null when it has none.
    [[nodiscard]] const Text* find(const NSString& key) const;

    [[nodiscard]] std::size_t count() const noexcept { return entries_.size(); }

private:
    // A place in the hash is eight bytes, so that a probe of a table of thousands stays near the processor. The keys
    // lie one behind the other for the same reason.
    struct Place {
        std::uint32_t check = 0; // the hash's other half
        std::uint32_t entry = 0; // counted from 1; 0 in a free place
    };
    struct Entry {
        std::size_t keyBegin;
        std::size_t keyLength;
        Text text;
    };

    void insert(std::size_t hash, std::uint32_t entry);

    std::vector<Place> places_; // a power of two of them, at most half in use; none when there are no entries
    std::vector<Entry> entries_;
    std::u16string keys_;
};

} // namespace qk::internal
