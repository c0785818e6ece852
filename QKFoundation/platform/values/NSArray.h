// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSCollectionStorage.h"

#include <cstddef>
#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

namespace qk {

class NSString;
class Value;

/// Immutable values in order. Copying shares them. Threads: may be read, copied and destroyed anywhere at the same
/// time.
class QK_EXPORT NSArray {
public:
    /// No values. Allocates nothing.
    NSArray() noexcept = default;
    NSArray(std::initializer_list<Value> values);
    explicit NSArray(std::vector<Value> values);
    explicit NSArray(const std::vector<NSString>& strings);

    /// Of what a builder has finished.
    explicit NSArray(internal::Elements<Value> values) noexcept : values_(std::move(values)) {}

    [[nodiscard]] std::size_t count() const noexcept { return values_.count(); }
    [[nodiscard]] bool isEmpty() const noexcept { return count() == 0; }

    /// Valid as long as this array or a copy of it lives.
    [[nodiscard]] std::span<const Value> values() const noexcept;
    [[nodiscard]] const Value* begin() const noexcept { return values_.data(); }
    [[nodiscard]] const Value* end() const noexcept;

    /// The value at `index`, which is below `count`.
    [[nodiscard]] const Value& operator[](std::size_t index) const noexcept;

    /// `arrayByAddingObject:`. A new array with `value` at its end.
    [[nodiscard]] NSArray arrayByAddingObject(const Value& value) const;

    /// The number of values: equal arrays have equal counts, and no array is walked for its hash.
    [[nodiscard]] std::size_t hash() const noexcept { return count(); }
    QK_EXPORT friend bool operator==(const NSArray& left, const NSArray& right);

private:
    internal::Elements<Value> values_;
};

} // namespace qk

#include "QKFoundation/platform/values/Value.h" // the element type, which holds arrays itself
