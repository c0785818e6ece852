// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSArray.h"

#include "QKFoundation/platform/values/Collections.h"

namespace qk {

NSArray::NSArray(std::initializer_list<Value> values) : NSArray(std::vector<Value>(values)) {}

NSArray::NSArray(std::vector<Value> values) : values_(internal::shareValues(std::move(values))) {}

NSArray::NSArray(const std::vector<NSString>& strings) : NSArray(std::vector<Value>(strings.begin(), strings.end())) {}

std::size_t NSArray::count() const noexcept {
    return values_ == nullptr ? 0 : values_->size();
}

std::span<const Value> NSArray::values() const noexcept {
    return values_ == nullptr ? std::span<const Value>() : std::span<const Value>(*values_);
}

const Value* NSArray::begin() const noexcept {
    return values().data();
}

const Value* NSArray::end() const noexcept {
    return values().data() + count();
}

const Value& NSArray::operator[](std::size_t index) const noexcept {
    return (*values_)[index];
}

NSArray NSArray::arrayByAddingObject(const Value& value) const {
    std::vector<Value> extended;
    extended.reserve(count() + 1);
    extended.assign(begin(), end());
    extended.push_back(value);
    return NSArray(std::move(extended));
}

bool operator==(const NSArray& left, const NSArray& right) {
    return left.values_ == right.values_ || (left.count() == right.count() && internal::areEqual(left, right));
}

} // namespace qk
