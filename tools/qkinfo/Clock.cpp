// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Clock.h"

#include <thread>

namespace qk::info {

namespace {

class SystemClock final : public Clock {
public:
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }

    [[nodiscard]] Moment moment() const override {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return {std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count()};
    }

    void wait(std::chrono::milliseconds duration) override { std::this_thread::sleep_for(duration); }
};

} // namespace

Clock& systemClock() {
    static SystemClock clock;
    return clock;
}

} // namespace qk::info
