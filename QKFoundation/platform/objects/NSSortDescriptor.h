// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace qk {

/// One step of an order: a key whose values are compared. A plain value. Threads: any.
class QK_EXPORT NSSortDescriptor {
public:
    /// `sortDescriptorWithKey:ascending:`.
    NSSortDescriptor(NSString key, bool ascending) : key_(std::move(key)), ascending_(ascending) {}

    [[nodiscard]] const NSString& key() const noexcept { return key_; }
    [[nodiscard]] bool ascending() const noexcept { return ascending_; }

    /// `compareObject:toObject:`. The key may be a path of keys joined by dots. Raises `NSUndefinedKeyException` for a
    /// key that an object does not have.
    [[nodiscard]] NSComparisonResult compareObject(const NSObject& object, const NSObject& toObject) const;

    /// The order of two values of the key. Numbers, strings and dates compare among themselves, strings literally. A
    /// value that is not there (nothing or the null marker) comes before every one that is, so it is last in a
    /// descending order; behind it come kinds that have no order, which are all the same, then numbers, strings, dates.
    [[nodiscard]] NSComparisonResult compareValues(const std::optional<Value>& left,
                                                   const std::optional<Value>& right) const;

private:
    NSString key_;
    bool ascending_;
};

/// The order of two objects by the first of `descriptors` that tells them apart.
[[nodiscard]] QK_EXPORT NSComparisonResult compareUsingDescriptors(const NSObject& left, const NSObject& right,
                                                                   const std::vector<NSSortDescriptor>& descriptors);

/// `sortedArrayUsingDescriptors:` of a list of objects. Equal objects keep their order.
template <typename T>
[[nodiscard]] std::vector<std::shared_ptr<T>>
sortedArrayUsingDescriptors(std::vector<std::shared_ptr<T>> self, const std::vector<NSSortDescriptor>& descriptors) {
    std::stable_sort(self.begin(), self.end(), [&](const std::shared_ptr<T>& left, const std::shared_ptr<T>& right) {
        return compareUsingDescriptors(*left, *right, descriptors) == NSComparisonResult::NSOrderedAscending;
    });
    return self;
}

} // namespace qk
