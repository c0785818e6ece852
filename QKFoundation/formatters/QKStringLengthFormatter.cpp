// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKStringLengthFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <utility>

namespace qk {
namespace {

constexpr std::uint64_t kLengthOfTwoDigits = 2;

// The text of a string, or of what answers `stringValue`.
std::optional<NSString> textOf(const Value& value) {
    if (const auto* text = value.as<NSString>()) {
        return *text;
    }
    if (const auto* number = value.as<NSNumber>()) {
        return number->stringValue();
    }
    const auto object = value.asObject<NSObject>();
    if (object == nullptr || !object->respondsToSelector("stringValue")) {
        return std::nullopt;
    }
    const auto answer = object->performSelector("stringValue");
    const NSString* text = answer.has_value() ? answer->as<NSString>() : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

} // namespace

const ClassDescription& QKStringLengthFormatter::describedClass() {
    using Self = QKStringLengthFormatter;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKStringLengthFormatter", NSFormatter::describedClass())
            .property("maxLength", &Self::maxLength, &Self::setMaxLength)
            .property("overflowLabel", &Self::overflowLabel, &Self::setOverflowLabel)
            .method("maxLength", &Self::maxLength)
            .method("setMaxLength:", &Self::setMaxLength)
            .method("overflowLabel", &Self::overflowLabel)
            .method("setOverflowLabel:", &Self::setOverflowLabel)
            .method("selfSetup", &Self::selfSetup)
            .build();
    return description;
}

const ClassDescription& QKStringLengthFormatter::classDescription() const {
    return describedClass();
}

void QKStringLengthFormatter::selfSetup() {
    setMaxLength(kLengthOfTwoDigits);
    setOverflowLabel("99+");
}

void QKStringLengthFormatter::setMaxLength(std::uint64_t length) {
    changeValueForKey("maxLength", [&] { maxLength_ = length; });
}

void QKStringLengthFormatter::setOverflowLabel(std::optional<NSString> label) {
    changeValueForKey("overflowLabel", [&] { overflowLabel_ = std::move(label); });
}

std::optional<NSString> QKStringLengthFormatter::stringForObjectValue(const std::optional<Value>& objectValue) const {
    auto text = objectValue.has_value() ? textOf(*objectValue) : std::nullopt;
    if (text.has_value() && text->length() > maxLength_) { // nothing is within every limit
        return overflowLabel_;
    }
    return text;
}

bool QKStringLengthFormatter::getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                                             std::optional<NSString>& /*errorDescription*/) const {
    objectValue = stringForObjectValue(forString);
    return true;
}

} // namespace qk
