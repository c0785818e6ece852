// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <functional>

namespace qk::internal {

void dispatch_sync_mainthread(const platform::Services& services, const std::function<void()>& task);
void dispatch_async_mainthread(const platform::Services& services, std::function<void()> task);

} // namespace qk::internal
