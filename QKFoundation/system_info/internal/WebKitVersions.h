// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/values/NSString.h"

/// The versions of a given machine's web engine.
namespace qk::internal {

[[nodiscard]] NSString embeddedWebKitVersion(const platform::Services& services);
[[nodiscard]] NSString safariWebKitVersion(const platform::Services& services);

} // namespace qk::internal
