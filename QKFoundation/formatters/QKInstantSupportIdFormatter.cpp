// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKInstantSupportIdFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKInstantSupportIdFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKInstantSupportIdFormatter>("QKInstantSupportIdFormatter", QKMeetingIDFormatter::describedClass())
            .build();
    return description;
}

const ClassDescription& QKInstantSupportIdFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKInstantSupportIdFormatter> QKInstantSupportIdFormatter::init() {
    return QKIDFormatterBase::init<QKInstantSupportIdFormatter>();
}

NSString QKInstantSupportIdFormatter::baseIDString() const {
    static const NSString& prefix = *new NSString("s");
    return prefix;
}

} // namespace qk
