// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDate.h"

namespace qk::platform {

/// The time of day. Threads: any, at the same time.
class QK_EXPORT Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock();

    /// `[NSDate date]`. The present moment.
    [[nodiscard]] virtual NSDate now() const = 0;
};

} // namespace qk::platform
