// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKDateSince1970ValueTransformer.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <cstdint>
#include <limits>

namespace qk {
namespace {

constexpr double kMillisecondsPerSecond = 1000.0;
constexpr std::int64_t kNoDate = std::numeric_limits<std::int64_t>::max();

} // namespace

const ClassDescription& QKDateSince1970ValueTransformer::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKDateSince1970ValueTransformer>("QKDateSince1970ValueTransformer",
                                                      NSValueTransformer::describedClass())
            .build();
    return description;
}

const ClassDescription& QKDateSince1970ValueTransformer::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKDateSince1970ValueTransformer> QKDateSince1970ValueTransformer::init() {
    return std::shared_ptr<QKDateSince1970ValueTransformer>(new QKDateSince1970ValueTransformer);
}

const std::type_info& QKDateSince1970ValueTransformer::transformedValueClass() noexcept {
    return typeid(NSDate);
}

std::optional<Value> QKDateSince1970ValueTransformer::transformedValue(const std::optional<Value>& value) const {
    const NSNumber* number = value.has_value() ? value->as<NSNumber>() : nullptr;
    const std::int64_t milliseconds = number != nullptr ? number->integerValue() : 0;
    if (milliseconds == 0 || milliseconds == kNoDate) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(milliseconds) / kMillisecondsPerSecond);
}

std::optional<Value> QKDateSince1970ValueTransformer::reverseTransformedValue(const std::optional<Value>& value) const {
    if (const NSDate* date = value.has_value() ? value->as<NSDate>() : nullptr) {
        return date->timeIntervalSince1970() * kMillisecondsPerSecond;
    }
    return std::int64_t{0};
}

} // namespace qk
