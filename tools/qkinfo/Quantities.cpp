// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Quantities.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <string_view>

namespace qk::info {

namespace {

constexpr std::uint64_t kMinutesOfDay = 1440;

constexpr std::uint64_t kKibibyte = 1024;

std::string exactText(Bytes bytes) {
    return std::to_string(bytes.number) + (bytes.number == 1 ? " byte" : " bytes");
}

std::string twoDigits(std::uint64_t number) {
    std::string digits = std::to_string(number);
    if (digits.size() < 2) {
        digits.insert(digits.begin(), '0');
    }
    return digits;
}

std::string formatted(const char* format, const std::tm& time) {
    std::array<char, 128> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
}

std::string localText(const char* format, Moment moment) {
    const auto seconds = static_cast<std::time_t>(moment.seconds);
    std::tm time{};
    return localtime_r(&seconds, &time) != nullptr ? formatted(format, time) : utcTimeText(moment);
}

} // namespace

std::string bytesText(Bytes bytes) {
    return bytes.number < kKibibyte ? exactText(bytes) : sizeText(bytes) + " (" + exactText(bytes) + ")";
}

std::string sizeText(Bytes bytes) {
    constexpr std::array<std::string_view, 6> kUnits{"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    if (bytes.number < kKibibyte) {
        return exactText(bytes);
    }
    std::size_t index = 0;
    std::uint64_t unit = kKibibyte;
    const auto tenths = [&] { return bytes.number / unit * 10 + (bytes.number % unit * 10 + unit / 2) / unit; };
    // Rounding may reach the next unit: 1048575 bytes are 1.0 MiB, not 1024.0 KiB.
    while (index + 1 < kUnits.size() && tenths() >= 10240) {
        unit *= 1024;
        ++index;
    }
    return std::to_string(tenths() / 10) + "." + std::to_string(tenths() % 10) + " " + std::string(kUnits[index]);
}

std::string percentText(Percent percent) {
    constexpr double kLargestShown = 1e9;
    std::array<char, 32> text{};
    const double number = std::clamp(percent.number, -kLargestShown, kLargestShown);
    const int length = std::snprintf(text.data(), text.size(), "%.1f%%", number);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string millisecondsText(Milliseconds duration) {
    return std::to_string(duration.number) + " ms";
}

std::string namesText(const Names& names) {
    std::string text;
    for (const std::string& name : names) {
        text.append(text.empty() ? "" : ", ").append(name);
    }
    return text.empty() ? "none" : text;
}

std::string frequencyText(Megahertz frequency) {
    std::string exact = std::to_string(frequency.number) + " MHz";
    if (frequency.number < 1000) {
        return exact;
    }
    const std::uint64_t hundredths = frequency.number / 10 + (frequency.number % 10 >= 5 ? 1 : 0);
    return std::to_string(hundredths / 100) + "." + twoDigits(hundredths % 100) + " GHz (" + exact + ")";
}

std::string speedText(BitsPerSecond speed) {
    constexpr std::uint64_t kThousand = 1000;
    constexpr std::array<std::string_view, 7> kUnits{"bit/s",  "kbit/s", "Mbit/s", "Gbit/s",
                                                     "Tbit/s", "Pbit/s", "Ebit/s"};
    std::size_t index = 0;
    std::uint64_t unit = 1;
    const auto tenths = [&] { return speed.number / unit * 10 + (speed.number % unit * 10 + unit / 2) / unit; };
    // As for sizes, rounding may reach the next unit.
    while (index + 1 < kUnits.size() && tenths() >= kThousand * 10) {
        unit *= kThousand;
        ++index;
    }
    const std::string fraction = tenths() % 10 != 0 ? "." + std::to_string(tenths() % 10) : "";
    return std::to_string(tenths() / 10) + fraction + " " + std::string(kUnits[index]);
}

std::string durationText(std::int64_t seconds) {
    const auto minutes = static_cast<std::uint64_t>(seconds) / 60;
    const std::uint64_t days = minutes / kMinutesOfDay;
    const std::string clock = std::to_string(minutes / 60 % 24) + ":" + twoDigits(minutes % 60);
    return days == 0 ? clock : std::to_string(days) + (days == 1 ? " day, " : " days, ") + clock;
}

std::string localTimeText(Moment moment) {
    return localText("%Y-%m-%d %H:%M:%S %Z", moment);
}

std::string localMinuteText(Moment moment) {
    return localText("%Y-%m-%d %H:%M", moment);
}

std::string bootTimeText(Moment moment, Moment now) {
    const std::string time = localTimeText(moment);
    return now.seconds < moment.seconds ? time : time + ", up " + durationText(now.seconds - moment.seconds);
}

std::string utcTimeText(Moment moment) {
    const auto seconds = static_cast<std::time_t>(moment.seconds);
    std::tm time{};
    gmtime_r(&seconds, &time);
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", time.tm_year + 1900,
                                     time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace qk::info
