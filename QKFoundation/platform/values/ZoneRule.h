// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Rules such as "CET-1CEST,M3.5.0,M10.5.0/3": the form that the variable TZ and the footers of zone files have.
namespace qk::internal {

/// One kind of local time: an offset from Greenwich and its name.
struct LocalTime {
    std::int64_t seconds = 0; ///< east of Greenwich positive
    bool isDaylightSaving = false;
    std::string abbreviation;

    [[nodiscard]] friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

/// A day of every year, and a time on it (before and beyond that day too), on the local clock.
struct YearlyMoment {
    enum class Kind {
        DayWithoutLeapDay, ///< `day` 1 to 365; the 29th of February is never counted
        DayOfYear,         ///< `day` 0 to 365; the 29th of February is counted
        WeekdayOfMonth,    ///< `day` 0 (Sunday) to 6 of the `week` 1 to 5 (the last one) of a `month`
    };
    Kind kind = Kind::DayOfYear;
    int day = 0;
    int month = 1;
    int week = 1;
    std::int64_t secondsOfDay = 0;

    /// The moment of `year` in seconds since 1970 as if the local clock were that of Greenwich.
    [[nodiscard]] std::int64_t inYear(int year) const;
};

/// The local time of a zone for all time: standard time, and daylight-saving time between two moments of each year.
class ZoneRule {
public:
    /// The rule that `text` writes as a whole: names of three letters and more, or of letters, digits, "+" and "-" in
    /// "<>"; offsets up to 24 hours; moments "Jn", "n" and "Mm.w.d", each with "/time" up to 167 hours of either sign.
    /// Daylight-saving time without moments begins on the second Sunday of March and ends on the first of November.
    /// Nothing when it is malformed.
    [[nodiscard]] static std::optional<ZoneRule> parse(std::string_view text);

    /// The local time at `moment`, in seconds since 1970.
    [[nodiscard]] const LocalTime& localTimeAt(std::int64_t moment) const;

private:
    struct Daylight {
        LocalTime time;
        YearlyMoment begin; // on the clock of standard time
        YearlyMoment end;   // on the clock of daylight-saving time
    };

    LocalTime standard_;
    std::optional<Daylight> daylight_;
};

} // namespace qk::internal
