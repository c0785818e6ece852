// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/unicode/Normalization.h"

namespace qk {

NSString NSString::precomposedStringWithCanonicalMapping() const {
    if (unicode::isNFC(units())) {
        return *this;
    }
    std::u16string composed;
    unicode::appendNFC(units(), composed);
    return NSString(composed);
}

} // namespace qk
