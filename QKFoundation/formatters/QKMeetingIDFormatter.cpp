// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKMeetingIDFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKMeetingIDFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKMeetingIDFormatter>("QKMeetingIDFormatter", QKIDFormatterBase::describedClass()).build();
    return description;
}

const ClassDescription& QKMeetingIDFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKMeetingIDFormatter> QKMeetingIDFormatter::init() {
    return QKIDFormatterBase::init<QKMeetingIDFormatter>();
}

void QKMeetingIDFormatter::selfSetup() {
    QKIDFormatterBase::selfSetup();
    setNonIDCharacterSet(NSCharacterSet::characterSetWithCharactersInString("1234567890").invertedSet());
}

NSString QKMeetingIDFormatter::separator() const {
    static const NSString& hyphen = *new NSString("-"); // asked for with every edit, to the end of the program
    return hyphen;
}

std::uint64_t QKMeetingIDFormatter::firstSeparatorIndex() const {
    return 2;
}

std::uint64_t QKMeetingIDFormatter::secondSeparatorIndex() const {
    return 5;
}

std::uint64_t QKMeetingIDFormatter::thirdSeparatorIndex() const {
    return QKIDFormatter_NoSeparatorIndex;
}

std::uint64_t QKMeetingIDFormatter::maximumIDLength() const {
    return 9;
}

NSString QKMeetingIDFormatter::baseIDString() const {
    static const NSString& prefix = *new NSString("m");
    return prefix;
}

NSString QKMeetingIDFormatter::validateID(const NSString& input) const {
    return formattedID(input, SeparatorPlaces::FromTheLeft);
}

} // namespace qk
