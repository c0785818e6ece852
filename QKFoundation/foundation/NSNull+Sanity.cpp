// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSNull+Sanity.h"

namespace qk::NSNull_Sanity {

NSSize sizeValue(NSNull /*self*/) {
    return {0, 0};
}

float floatValue(NSNull /*self*/) {
    return 0;
}

bool boolValue(NSNull /*self*/) {
    return false;
}

std::int32_t intValue(NSNull /*self*/) {
    return 0;
}

} // namespace qk::NSNull_Sanity
