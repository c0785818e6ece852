// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

/// `NSString(UTIConformance)`. Threads: any.
namespace qk::NSString_UTIConformance {

/// `conformsToUTIType:`. Whether the type of the identifier `self` is `type` or conforms to it, over any number of
/// steps: "public.png" conforms to "public.image". Letter case makes no difference. An identifier that the system does
/// not know conforms to itself alone.
[[nodiscard]] QK_EXPORT bool conformsToUTIType(const NSString& self, const NSString& type);

} // namespace qk::NSString_UTIConformance
