// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSSortDescriptor.h"

#include "QKFoundation/platform/objects/internal/KeyPaths.h"
#include "QKFoundation/platform/objects/internal/ValueOrder.h"

namespace qk {

namespace internal {
namespace {

NSComparisonResult asResult(std::weak_ordering order) {
    return order < 0   ? NSComparisonResult::NSOrderedAscending
           : order > 0 ? NSComparisonResult::NSOrderedDescending
                       : NSComparisonResult::NSOrderedSame;
}

/// Values of different kinds are in the order of these: any order does, as long as sorting can rely on it.
enum class Rank { Absent, Unordered, Number, String, Date };

Rank rankOf(const std::optional<Value>& value) {
    if (!value.has_value() || value->isNull()) {
        return Rank::Absent;
    }
    if (value->as<NSNumber>() != nullptr) {
        return Rank::Number;
    }
    if (value->as<NSString>() != nullptr) {
        return Rank::String;
    }
    return value->as<NSDate>() != nullptr ? Rank::Date : Rank::Unordered;
}

} // namespace

std::optional<NSComparisonResult> orderOf(const Value& left, const Value& right) {
    if (const auto* number = left.as<NSNumber>(), *other = right.as<NSNumber>();
        number != nullptr && other != nullptr) {
        return number->compare(*other);
    }
    if (const auto* string = left.as<NSString>(), *other = right.as<NSString>();
        string != nullptr && other != nullptr) {
        return string->compare(*other);
    }
    if (const auto* date = left.as<NSDate>(), *other = right.as<NSDate>(); date != nullptr && other != nullptr) {
        return asResult(*date <=> *other);
    }
    return std::nullopt;
}

} // namespace internal

NSComparisonResult NSSortDescriptor::compareValues(const std::optional<Value>& left,
                                                   const std::optional<Value>& right) const {
    const internal::Rank leftRank = internal::rankOf(left);
    const internal::Rank rightRank = internal::rankOf(right);
    NSComparisonResult result = internal::asResult(leftRank <=> rightRank);
    if (leftRank == rightRank && leftRank > internal::Rank::Unordered) {
        result = internal::orderOf(*left, *right).value_or(NSComparisonResult::NSOrderedSame);
    }
    return ascending_ ? result : static_cast<NSComparisonResult>(-static_cast<int>(result));
}

NSComparisonResult NSSortDescriptor::compareObject(const NSObject& object, const NSObject& toObject) const {
    return compareValues(internal::valueForKeyPath(object, key_), internal::valueForKeyPath(toObject, key_));
}

NSComparisonResult compareUsingDescriptors(const NSObject& left, const NSObject& right,
                                           const std::vector<NSSortDescriptor>& descriptors) {
    for (const NSSortDescriptor& descriptor : descriptors) {
        const NSComparisonResult result = descriptor.compareObject(left, right);
        if (result != NSComparisonResult::NSOrderedSame) {
            return result;
        }
    }
    return NSComparisonResult::NSOrderedSame;
}

} // namespace qk
