// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSNumber+ReverseComparing.h"

namespace qk::NSNumber_ReverseComparing {

NSComparisonResult reverseCompare(const NSNumber& self, const NSNumber& other) {
    return other.compare(self);
}

} // namespace qk::NSNumber_ReverseComparing
