// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Clock.h"

#include <vector>

namespace qk::info {

/// A clock that stands still but for those who wait for it.
class ManualClock final : public Clock {
public:
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return elapsed_; }
    [[nodiscard]] Moment moment() const override { return {1'714'551'753}; } // 2024-05-01 08:22:33 UTC

    void wait(std::chrono::milliseconds duration) override {
        waits.push_back(duration);
        elapsed_ += duration;
    }

    std::vector<std::chrono::milliseconds> waits;

private:
    std::chrono::nanoseconds elapsed_{1'000'000};
};

} // namespace qk::info
