// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxClock.h"

#include <time.h>

namespace qk::platform {

NSDate LinuxClock::now() const {
    constexpr double kNanosecondsOfSecond = 1e9;
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(time.tv_sec) +
                                                 static_cast<double>(time.tv_nsec) / kNanosecondsOfSecond);
}

} // namespace qk::platform
