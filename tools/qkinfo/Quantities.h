// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <cstdint>
#include <string>

/// Quantities in the words that people read, and in those that programs read.
namespace qk::info {

/// "24.0 GiB (25769803776 bytes)", "1023 bytes". Rounded half up to one decimal.
[[nodiscard]] std::string bytesText(Bytes bytes);

/// "24.0 GiB", "1023 bytes": for places without room for the exact number.
[[nodiscard]] std::string sizeText(Bytes bytes);

/// "12.5%". Rounded to one decimal. `percent` may be any number that is finite.
[[nodiscard]] std::string percentText(Percent percent);

/// "250 ms".
[[nodiscard]] std::string millisecondsText(Milliseconds duration);

/// "sshd, sleep, sleep", or "none".
[[nodiscard]] std::string namesText(const Names& names);

/// "2.60 GHz (2599 MHz)", "800 MHz".
[[nodiscard]] std::string frequencyText(Megahertz frequency);

/// "1 Gbit/s", "2.5 Gbit/s", "866.7 Mbit/s", "300 bit/s". Rounded half up to one decimal.
[[nodiscard]] std::string speedText(BitsPerSecond speed);

/// "2:14", "1 day, 0:05", "3 days, 2:14": days, hours and minutes, seconds dropped. `seconds` is not negative.
[[nodiscard]] std::string durationText(std::int64_t seconds);

/// "2024-05-01 10:22:33 CEST": local time.
[[nodiscard]] std::string localTimeText(Moment moment);

/// "2024-05-01 10:22": local time, for places without room for more.
[[nodiscard]] std::string localMinuteText(Moment moment);

/// The local time and how long ago it was: "2024-05-01 10:22:33 CEST, up 3 days, 2:14". A moment that `now` has not
/// reached, on a machine whose clock was set, is the local time alone.
[[nodiscard]] std::string bootTimeText(Moment moment, Moment now);

/// ISO 8601 in UTC: "2024-05-01T08:22:33Z".
[[nodiscard]] std::string utcTimeText(Moment moment);

} // namespace qk::info
