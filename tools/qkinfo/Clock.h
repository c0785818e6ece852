// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <chrono>

namespace qk::info {

/// The passing of time, which tests let pass by hand.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Time since an unknown start; never goes back.
    [[nodiscard]] virtual std::chrono::nanoseconds elapsed() const = 0;

    /// The date and time.
    [[nodiscard]] virtual Moment moment() const = 0;

    /// Returns after `duration`. A signal that ends the process ends it while it waits, too.
    virtual void wait(std::chrono::milliseconds duration) = 0;
};

/// This machine's clock.
[[nodiscard]] Clock& systemClock();

} // namespace qk::info
