// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSArray.h"

#include "QKFoundation/platform/values/Collections.h"

namespace qk {

using internal::CollectionBuilder;

NSArray::NSArray(std::initializer_list<Value> values) : NSArray(CollectionBuilder<Value>(values).finish()) {}

NSArray::NSArray(std::vector<Value> values) : NSArray(CollectionBuilder<Value>(std::move(values)).finish()) {}

NSArray::NSArray(const std::vector<NSString>& strings) {
    CollectionBuilder<Value> values(strings.size());
    for (const NSString& string : strings) {
        values.add(string);
    }
    values_ = values.finish();
}

NSArray NSArray::arrayByAddingObject(const Value& value) const {
    CollectionBuilder<Value> extended(count() + 1);
    for (const Value& each : *this) {
        extended.add(each);
    }
    extended.add(value);
    return NSArray(extended.finish());
}

bool operator==(const NSArray& left, const NSArray& right) {
    return left.begin() == right.begin() || (left.count() == right.count() && internal::areEqual(left, right));
}

} // namespace qk
