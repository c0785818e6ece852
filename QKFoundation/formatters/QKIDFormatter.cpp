// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKIDFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKIDFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKIDFormatter>("QKIDFormatter", QKIDFormatterBase::describedClass()).build();
    return description;
}

const ClassDescription& QKIDFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKIDFormatter> QKIDFormatter::init() {
    return QKIDFormatterBase::init<QKIDFormatter>();
}

void QKIDFormatter::selfSetup() {
    QKIDFormatterBase::selfSetup();
    setNonIDCharacterSet(NSCharacterSet::characterSetWithCharactersInString("1234567890").invertedSet());
}

NSString QKIDFormatter::separator() const {
    static const NSString& blank = *new NSString(" "); // asked for with every edit, to the end of the program
    return blank;
}

std::uint64_t QKIDFormatter::firstSeparatorIndex() const {
    return 3;
}

std::uint64_t QKIDFormatter::secondSeparatorIndex() const {
    return 6;
}

std::uint64_t QKIDFormatter::thirdSeparatorIndex() const {
    return 9;
}

std::uint64_t QKIDFormatter::maximumIDLength() const {
    return 10;
}

NSString QKIDFormatter::baseIDString() const {
    return {};
}

} // namespace qk
