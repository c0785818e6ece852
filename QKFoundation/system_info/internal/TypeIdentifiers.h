// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

/// The types of a given machine.
namespace qk::internal {

[[nodiscard]] NSString typeIdentifierForPathExtension(const platform::Services& services, const NSString& extension);
[[nodiscard]] bool typeIdentifierWithPathExtension(const platform::Services& services, const NSString& extension,
                                                   const NSString& conformsToOtherTypeIdentifier);

} // namespace qk::internal
