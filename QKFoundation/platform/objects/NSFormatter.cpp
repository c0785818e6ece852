// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& NSFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSFormatter>("NSFormatter", NSObject::describedClass())
            .method("stringForObjectValue:", &NSFormatter::stringForObjectValue)
            .build();
    return description;
}

const ClassDescription& NSFormatter::classDescription() const {
    return describedClass();
}

std::optional<NSString> NSFormatter::stringForObjectValue(const std::optional<Value>& /*objectValue*/) const {
    doesNotRecognizeSelector("stringForObjectValue:");
    return std::nullopt;
}

std::optional<NSAttributedString>
NSFormatter::attributedStringForObjectValue(const std::optional<Value>& /*objectValue*/,
                                            const NSDictionary& /*withDefaultAttributes*/) const {
    return std::nullopt;
}

bool NSFormatter::getObjectValue(std::optional<Value>& /*objectValue*/, const NSString& /*forString*/,
                                 std::optional<NSString>& /*errorDescription*/) const {
    doesNotRecognizeSelector("getObjectValue:forString:errorDescription:");
    return false;
}

bool NSFormatter::isPartialStringValid(NSString& /*partialString*/, NSRange& /*proposedSelectedRange*/,
                                       const NSString& /*originalString*/, NSRange /*originalSelectedRange*/,
                                       std::optional<NSString>& /*errorDescription*/) const {
    return true;
}

} // namespace qk
