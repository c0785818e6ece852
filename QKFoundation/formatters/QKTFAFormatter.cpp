// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKTFAFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {
namespace {

constexpr std::uint64_t kCodeLength = 6;

} // namespace

const ClassDescription& QKTFAFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKTFAFormatter>("QKTFAFormatter", QKDecimalNumberFormatter::describedClass()).build();
    return description;
}

const ClassDescription& QKTFAFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKTFAFormatter> QKTFAFormatter::init() {
    return QKDecimalNumberFormatter::init<QKTFAFormatter>();
}

std::shared_ptr<QKTFAFormatter> QKTFAFormatter::initWithCoder(const NSCoder& coder) {
    return QKDecimalNumberFormatter::initWithCoder<QKTFAFormatter>(coder);
}

void QKTFAFormatter::setUpWithCoder(const NSCoder& coder) {
    QKDecimalNumberFormatter::setUpWithCoder(coder);
    setMaxLength(kCodeLength);
}

} // namespace qk
