// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKIDNameIPFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKIDNameIPFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKIDNameIPFormatter>("QKIDNameIPFormatter", QKIDFormatter::describedClass()).build();
    return description;
}

const ClassDescription& QKIDNameIPFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKIDNameIPFormatter> QKIDNameIPFormatter::init() {
    return QKIDFormatterBase::init<QKIDNameIPFormatter>();
}

void QKIDNameIPFormatter::selfSetup() {
    QKIDFormatter::selfSetup();
    validIDOnlyCharacterSet_ =
        NSCharacterSet::characterSetWithCharactersInString("1234567890" + separator()).invertedSet();
}

bool QKIDNameIPFormatter::isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange,
                                               const NSString& originalString, NSRange originalSelectedRange,
                                               std::optional<NSString>& errorDescription) const {
    if (validIDOnlyCharacterSet_.has_value() && rangeOfCharacterFromSet(partialString, *validIDOnlyCharacterSet_)) {
        return true;
    }
    return QKIDFormatter::isPartialStringValid(partialString, proposedSelectedRange, originalString,
                                               originalSelectedRange, errorDescription);
}

} // namespace qk
