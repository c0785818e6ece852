// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Facts.h"

#include "tools/qkinfo/DisplayText.h"

#include <cmath>

namespace qk::info {

namespace {

constexpr double kYear0 = -62'167'219'200.0;
constexpr double kYear10000 = 253'402'300'800.0;

} // namespace

std::optional<Content> textContent(const std::optional<NSString>& text) {
    if (!text.has_value()) {
        return std::nullopt;
    }
    const std::string bytes = wellFormedUTF8(*text);
    constexpr std::string_view kBlanks(" \t\n\v\f\r\0", 7);
    const std::size_t first = bytes.find_first_not_of(kBlanks);
    if (first == std::string::npos) {
        return std::nullopt;
    }
    return bytes.substr(first, bytes.find_last_not_of(kBlanks) - first + 1);
}

std::optional<Content> percentContent(double percent) {
    return std::isfinite(percent) ? std::optional<Content>(Percent{percent}) : std::nullopt;
}

std::optional<Content> momentContent(const std::optional<NSDate>& date) {
    const double seconds = date.has_value() ? std::floor(date->timeIntervalSince1970()) : kYear10000;
    // Written so that a value that is not a number fails as well.
    if (!(seconds >= kYear0 && seconds < kYear10000)) {
        return std::nullopt;
    }
    return Moment{static_cast<std::int64_t>(seconds)};
}

} // namespace qk::info
