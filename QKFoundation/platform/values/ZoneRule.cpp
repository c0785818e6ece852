// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/ZoneRule.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace qk::internal {
namespace {

using namespace std::chrono;

constexpr std::int64_t kSecondsOfHour = 3600;
constexpr std::int64_t kSecondsOfDay = 24 * kSecondsOfHour;
constexpr int kOffsetHours = 24;
constexpr int kMomentHours = 167;
constexpr std::int64_t kUsualTime = 2 * kSecondsOfHour;
constexpr std::size_t kShortestName = 3;

// Where the calendar below still counts right; what lies beyond is read as the moment at the limit.
constexpr std::int64_t kFirstMoment = sys_seconds(sys_days(year(-30000) / January / 1)).time_since_epoch().count();
constexpr std::int64_t kLastMoment = sys_seconds(sys_days(year(30000) / January / 1)).time_since_epoch().count();

constexpr bool isDigit(char unit) {
    return unit >= '0' && unit <= '9';
}
constexpr bool isLetter(char unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}
constexpr bool isQuotedNameUnit(char unit) {
    return isLetter(unit) || isDigit(unit) || unit == '+' || unit == '-';
}

// Reads from the front of a text; what was taken is gone, also when the rest then does not fit.
class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    [[nodiscard]] bool isAtEnd() const { return text_.empty(); }
    [[nodiscard]] bool isAt(char unit) const { return text_.starts_with(unit); }

    bool take(char unit) {
        const bool found = isAt(unit);
        text_.remove_prefix(found ? 1 : 0);
        return found;
    }

    std::optional<int> number(int lowest, int highest) {
        const auto end = static_cast<std::size_t>(std::ranges::find_if_not(text_, isDigit) - text_.begin());
        if (end == 0 || end > 3) {
            return std::nullopt;
        }
        int value = 0;
        for (const char digit : text_.substr(0, end)) {
            value = value * 10 + (digit - '0');
        }
        text_.remove_prefix(end);
        return value >= lowest && value <= highest ? std::optional(value) : std::nullopt;
    }

    std::optional<std::string> name() {
        const bool quoted = take('<');
        const auto* const last =
            quoted ? std::ranges::find_if_not(text_, isQuotedNameUnit) : std::ranges::find_if_not(text_, isLetter);
        std::string name(text_.begin(), last);
        text_.remove_prefix(name.size());
        if (name.size() < kShortestName || (quoted && !take('>'))) {
            return std::nullopt;
        }
        return name;
    }

    // [+|-]hh[:mm[:ss]] in seconds.
    std::optional<std::int64_t> time(int highestHours) {
        const bool negative = take('-');
        if (!negative) {
            take('+');
        }
        const std::optional<int> hours = number(0, highestHours);
        if (!hours.has_value()) {
            return std::nullopt;
        }
        std::int64_t seconds = *hours * kSecondsOfHour;
        for (std::int64_t unit = 60; unit != 0 && take(':'); unit /= 60) {
            const std::optional<int> part = number(0, 59);
            if (!part.has_value()) {
                return std::nullopt;
            }
            seconds += *part * unit;
        }
        return negative ? -seconds : seconds;
    }

    std::optional<YearlyMoment> moment() {
        std::optional<YearlyMoment> result = day();
        if (result.has_value()) {
            const std::optional<std::int64_t> seconds = take('/') ? time(kMomentHours) : std::optional(kUsualTime);
            if (!seconds.has_value()) {
                return std::nullopt;
            }
            result->secondsOfDay = *seconds;
        }
        return result;
    }

private:
    std::optional<YearlyMoment> day() {
        YearlyMoment moment;
        std::optional<int> day;
        if (take('M')) {
            const std::optional<int> month = number(1, 12);
            const std::optional<int> week = month.has_value() && take('.') ? number(1, 5) : std::nullopt;
            day = week.has_value() && take('.') ? number(0, 6) : std::nullopt;
            moment.kind = YearlyMoment::Kind::WeekdayOfMonth;
            moment.month = month.value_or(1);
            moment.week = week.value_or(1);
        } else if (take('J')) {
            day = number(1, 365);
            moment.kind = YearlyMoment::Kind::DayWithoutLeapDay;
        } else {
            day = number(0, 365);
        }
        moment.day = day.value_or(0);
        return day.has_value() ? std::optional(moment) : std::nullopt;
    }

    std::string_view text_;
};

sys_days dayOf(const YearlyMoment& moment, year inYear) {
    const sys_days first = sys_days(inYear / January / 1);
    switch (moment.kind) {
    case YearlyMoment::Kind::DayOfYear: return first + days(moment.day);
    case YearlyMoment::Kind::DayWithoutLeapDay: {
        constexpr int kLastOfFebruary = 31 + 28;
        return first + days(moment.day - 1 + (inYear.is_leap() && moment.day > kLastOfFebruary ? 1 : 0));
    }
    case YearlyMoment::Kind::WeekdayOfMonth: break;
    }
    const year_month month(inYear, std::chrono::month(static_cast<unsigned>(moment.month)));
    const weekday day(static_cast<unsigned>(moment.day));
    constexpr int kLastWeek = 5;
    return moment.week == kLastWeek ? sys_days(month / day[last])
                                    : sys_days(month / day[static_cast<unsigned>(moment.week)]);
}

} // namespace

std::int64_t YearlyMoment::inYear(int year) const {
    return sys_seconds(dayOf(*this, std::chrono::year(year))).time_since_epoch().count() + secondsOfDay;
}

std::optional<ZoneRule> ZoneRule::parse(std::string_view text) {
    Reader reader(text);
    ZoneRule rule;
    std::optional<std::string> name = reader.name();
    std::optional<std::int64_t> west = name.has_value() ? reader.time(kOffsetHours) : std::nullopt;
    if (!west.has_value()) {
        return std::nullopt;
    }
    rule.standard_ = {-*west, false, *std::move(name)};
    if (reader.isAtEnd()) {
        return rule;
    }
    name = reader.name();
    if (!name.has_value()) {
        return std::nullopt;
    }
    west = reader.isAtEnd() || reader.isAt(',') ? std::optional(*west - kSecondsOfHour) : reader.time(kOffsetHours);
    if (!west.has_value()) {
        return std::nullopt;
    }
    Reader moments(",M3.2.0,M11.1.0");
    Reader& source = reader.isAtEnd() ? moments : reader;
    const std::optional<YearlyMoment> begin = source.take(',') ? source.moment() : std::nullopt;
    const std::optional<YearlyMoment> end = begin.has_value() && source.take(',') ? source.moment() : std::nullopt;
    if (!end.has_value() || !source.isAtEnd()) {
        return std::nullopt;
    }
    rule.daylight_ = Daylight{{-*west, true, *std::move(name)}, *begin, *end};
    return rule;
}

const LocalTime& ZoneRule::localTimeAt(std::int64_t moment) const {
    if (!daylight_.has_value()) {
        return standard_;
    }
    moment = std::clamp(moment, kFirstMoment, kLastMoment);
    const sys_days day = floor<days>(sys_seconds(seconds(moment)));
    const int thisYear = static_cast<int>(year_month_day(day).year());
    // A moment may lie a week outside of its year, so the neighbours count too. Of two changes at the same moment the
    // later one in this order holds: daylight-saving time that lasts all year ends and begins at once.
    const LocalTime* result = &standard_;
    std::int64_t latest = kFirstMoment - 4 * 366 * kSecondsOfDay;
    for (int year = thisYear - 2; year <= thisYear + 1; ++year) {
        const std::int64_t begin = daylight_->begin.inYear(year) - standard_.seconds;
        const std::int64_t end = daylight_->end.inYear(year) - daylight_->time.seconds;
        if (begin <= moment && begin >= latest) {
            latest = begin;
            result = &daylight_->time;
        }
        if (end <= moment && end >= latest) {
            latest = end;
            result = &standard_;
        }
    }
    return *result;
}

} // namespace qk::internal
