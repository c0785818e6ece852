// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKDecimalNumberFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <limits>

namespace qk {

const ClassDescription& QKDecimalNumberFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKDecimalNumberFormatter>("QKDecimalNumberFormatter", NSNumberFormatter::describedClass())
            .property("maxLength", &QKDecimalNumberFormatter::maxLength, &QKDecimalNumberFormatter::setMaxLength)
            .method("maxLength", &QKDecimalNumberFormatter::maxLength)
            .method("setMaxLength:", &QKDecimalNumberFormatter::setMaxLength)
            .build();
    return description;
}

const ClassDescription& QKDecimalNumberFormatter::classDescription() const {
    return describedClass();
}

void QKDecimalNumberFormatter::setUpWithCoder(const NSCoder& /*coder*/) {
    setMaxLength(std::numeric_limits<std::uint64_t>::max());
    setInvalidCharactersSet(NSCharacterSet::characterSetWithCharactersInString("1234567890").invertedSet());
}

void QKDecimalNumberFormatter::setMaxLength(std::uint64_t length) {
    changeValueForKey("maxLength", [&] { maxLength_ = length; });
}

bool QKDecimalNumberFormatter::isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange,
                                                    const NSString& originalString, NSRange originalSelectedRange,
                                                    std::optional<NSString>& errorDescription) const {
    if (partialString.length() > maxLength_) {
        return false;
    }
    if (invalidCharactersSet_.has_value() && rangeOfCharacterFromSet(partialString, *invalidCharactersSet_)) {
        return false;
    }
    return NSNumberFormatter::isPartialStringValid(partialString, proposedSelectedRange, originalString,
                                                   originalSelectedRange, errorDescription);
}

} // namespace qk
