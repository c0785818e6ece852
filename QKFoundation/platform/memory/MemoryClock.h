// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Clock.h"

#include <atomic>

namespace qk::platform::memory {

/// A clock that stands still until it is told otherwise, at 1970-01-01 00:00:00 UTC first. Threads: any, at the same
/// time.
class QK_EXPORT MemoryClock final : public Clock {
public:
    void setNow(const NSDate& now) { seconds_ = now.timeIntervalSince1970(); }
    void advance(double seconds) { seconds_ = seconds_ + seconds; }

    [[nodiscard]] NSDate now() const override { return NSDate::dateWithTimeIntervalSince1970(seconds_); }

private:
    std::atomic<double> seconds_ = 0;
};

} // namespace qk::platform::memory
