// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSTimeZone.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

/// Zone files of any bytes, and rules of any text. A zone answers for every moment, the same each time.
namespace qk {
namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void ask(const std::optional<NSTimeZone>& zone) {
    if (!zone.has_value()) {
        return;
    }
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double seconds :
         {-kInfinity, -1e30, -9.3e18, -1e11, -2147483649.0, -1.0, 0.0, 951782400.0, 1456704000.0, 1478412000.0,
          2147483648.0, 4102444800.0, 1e11, 1e15, 9.3e18, kInfinity, std::nan("")}) {
        const NSDate date = NSDate::dateWithTimeIntervalSince1970(seconds);
        const std::int64_t offset = zone->secondsFromGMTForDate(date);
        require(std::abs(offset) <= std::numeric_limits<std::int32_t>::max());
        require(zone->secondsFromGMTForDate(date) == offset);
        const auto abbreviation = zone->abbreviationForDate(date);
        require(!abbreviation.has_value() || !abbreviation->isEmpty());
        static_cast<void>(zone->isDaylightSavingTimeForDate(date));
    }
    for (int day = 0; day < 800; ++day) {
        constexpr double kDay = 86400;
        static_cast<void>(zone->secondsFromGMTForDate(NSDate::dateWithTimeIntervalSince1970(1.45e9 + day * kDay)));
    }
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    qk::ask(qk::NSTimeZone::timeZoneWithName("name", bytes));
    qk::ask(qk::NSTimeZone::timeZoneWithRule("name", bytes));
    return 0;
}
