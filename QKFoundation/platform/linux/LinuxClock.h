// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Clock.h"

namespace qk::platform {

/// The clock of the kernel, as it is set now. Threads: any, at the same time.
class LinuxClock final : public Clock {
public:
    [[nodiscard]] NSDate now() const override;
};

} // namespace qk::platform
