// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <cstdint>

/// Breadcrumbs on a given machine.
namespace qk::internal {

[[nodiscard]] bool hasActivityTracing(const platform::Services& services);
void breadcrumbForAction(const platform::Services& services, std::int64_t action);

} // namespace qk::internal
