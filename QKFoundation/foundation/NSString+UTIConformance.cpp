// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+UTIConformance.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

namespace qk {

bool internal::conformsToUTIType(const platform::Services& services, const NSString& type, const NSString& conformsTo) {
    return services.uniformTypes->typeConformsTo(type, conformsTo);
}

bool NSString_UTIConformance::conformsToUTIType(const NSString& self, const NSString& type) {
    return internal::conformsToUTIType(*platform::services(), self, type);
}

} // namespace qk
