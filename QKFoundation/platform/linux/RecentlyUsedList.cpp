// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/RecentlyUsedList.h"

#include <pugixml.hpp>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <optional>
#include <system_error>
#include <utility>

namespace qk::platform {
namespace {

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 3600;
constexpr int kMinutesPerHour = 60;
constexpr int kLastHour = 23;

// Takes text apart from its front.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    // A number of exactly that many digits.
    std::optional<int> number(std::size_t digits) {
        int value = 0;
        const char* const end = text_.data() + std::min(digits, text_.size());
        if (text_.size() < digits || text_.front() < '0' || text_.front() > '9') {
            return std::nullopt;
        }
        const auto [stop, error] = std::from_chars(text_.data(), end, value);
        if (error != std::errc() || stop != end) {
            return std::nullopt;
        }
        text_.remove_prefix(digits);
        return value;
    }

    bool skip(char unit) {
        if (!text_.starts_with(unit)) {
            return false;
        }
        text_.remove_prefix(1);
        return true;
    }

    [[nodiscard]] bool isAtEnd() const { return text_.empty(); }

    // What the digits after a point are worth.
    double fraction() {
        constexpr double kTenth = 0.1;
        double value = 0;
        for (double weight = kTenth; !text_.empty() && text_.front() >= '0' && text_.front() <= '9'; weight *= kTenth) {
            value += weight * (text_.front() - '0');
            text_.remove_prefix(1);
        }
        return value;
    }

private:
    std::string_view text_;
};

// "2024-05-06"; days since 1970.
std::optional<std::int64_t> days(Scanner& scanner) {
    const auto year = scanner.number(4);
    const bool hasMonth = scanner.skip('-');
    const auto month = scanner.number(2);
    const bool hasDay = scanner.skip('-');
    const auto day = scanner.number(2);
    if (!year.has_value() || !month.has_value() || !day.has_value() || !hasMonth || !hasDay) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    return date.ok() ? std::optional<std::int64_t>(std::chrono::sys_days(date).time_since_epoch().count())
                     : std::nullopt;
}

// "07:08:09.25"; a leap second counts as the next one.
std::optional<double> secondsOfDay(Scanner& scanner) {
    const auto hours = scanner.number(2);
    const bool hasMinutes = scanner.skip(':');
    const auto minutes = scanner.number(2);
    const bool hasSeconds = scanner.skip(':');
    const auto seconds = scanner.number(2);
    if (!hours.has_value() || !minutes.has_value() || !seconds.has_value() || !hasMinutes || !hasSeconds ||
        *hours > kLastHour || *minutes >= kMinutesPerHour || *seconds > kSecondsPerMinute) {
        return std::nullopt;
    }
    const double fraction = scanner.skip('.') ? scanner.fraction() : 0;
    return *hours * kSecondsPerHour + *minutes * kSecondsPerMinute + *seconds + fraction;
}

// "Z", "+02:00", "-0530", or nothing, which is UTC too.
std::optional<int> offset(Scanner& scanner) {
    if (scanner.isAtEnd() || scanner.skip('Z')) {
        return 0;
    }
    const bool isWest = scanner.skip('-');
    if (!isWest && !scanner.skip('+')) {
        return std::nullopt;
    }
    const auto hours = scanner.number(2);
    static_cast<void>(scanner.skip(':'));
    const auto minutes = scanner.number(2);
    if (!hours.has_value() || !minutes.has_value() || *hours > kLastHour || *minutes >= kMinutesPerHour) {
        return std::nullopt;
    }
    const int seconds = *hours * kSecondsPerHour + *minutes * kSecondsPerMinute;
    return isWest ? -seconds : seconds;
}

// A moment such as "2024-05-06T07:08:09.25Z"; seconds since 1970.
std::optional<double> moment(std::string_view text) {
    constexpr double kSecondsPerDay = 86'400;
    Scanner scanner(text);
    const auto date = days(scanner);
    if (!date.has_value() || !scanner.skip('T')) {
        return std::nullopt;
    }
    const auto time = secondsOfDay(scanner);
    if (!time.has_value()) {
        return std::nullopt;
    }
    const auto east = offset(scanner);
    if (!east.has_value() || !scanner.isAtEnd()) {
        return std::nullopt;
    }
    return static_cast<double>(*date) * kSecondsPerDay + *time - *east;
}

// The byte of two digits of base 16.
std::optional<char> byteOf(std::string_view digits) {
    constexpr int kHexadecimal = 16;
    unsigned char value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, kHexadecimal);
    return digits.size() == 2 && error == std::errc() && stop == end ? std::optional(static_cast<char>(value))
                                                                     : std::nullopt;
}

// The path of a file URL of this machine.
std::optional<std::string> pathOf(std::string_view url) {
    constexpr std::string_view kScheme = "file://";
    constexpr std::string_view kThisHost = "localhost";
    if (!url.starts_with(kScheme)) {
        return std::nullopt;
    }
    url.remove_prefix(kScheme.size());
    if (url.starts_with(kThisHost)) {
        url.remove_prefix(kThisHost.size());
    }
    if (!url.starts_with('/')) {
        return std::nullopt;
    }
    std::string path;
    path.reserve(url.size());
    while (!url.empty()) {
        const bool isEscape = url.front() == '%';
        const std::optional<char> byte = isEscape ? byteOf(url.substr(1, 2)) : std::optional(url.front());
        if (!byte.has_value() || *byte == '\0' || (!isEscape && *byte == '#')) {
            return std::nullopt;
        }
        path.push_back(*byte);
        url.remove_prefix(isEscape ? 3 : 1);
    }
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

} // namespace

std::vector<RecentlyUsedFile> recentlyUsedFiles(std::string_view text) {
    pugi::xml_document document;
    if (text.size() > kRecentlyUsedListLimit ||
        !document.load_buffer(text.data(), text.size(), pugi::parse_minimal | pugi::parse_escapes,
                              pugi::encoding_utf8)) {
        return {};
    }
    std::vector<RecentlyUsedFile> files;
    for (const pugi::xml_node bookmark : document.child("xbel").children("bookmark")) {
        std::optional<std::string> path = pathOf(bookmark.attribute("href").value());
        const std::optional<double> visited = moment(bookmark.attribute("visited").value());
        if (path.has_value() && visited.has_value() && files.size() < kRecentlyUsedFilesLimit) {
            files.push_back({.path = *std::move(path), .visited = *visited});
        }
    }
    return files;
}

} // namespace qk::platform
