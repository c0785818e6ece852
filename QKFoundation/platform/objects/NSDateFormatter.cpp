// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSDateFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qk {
namespace {

using namespace std::chrono;

constexpr std::array<const char*, 7> kWeekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                               "Thursday", "Friday", "Saturday"};
constexpr std::array<const char*, 12> kMonths{"January", "February", "March",     "April",   "May",      "June",
                                              "July",    "August",   "September", "October", "November", "December"};
constexpr std::int64_t kThousand = 1000;
constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;

// A moment on a local clock, taken apart.
struct Fields {
    year_month_day date;
    unsigned weekday = 0;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;
    std::int64_t millisecond = 0;
    std::int64_t secondsFromGMT = 0;
    std::string zone; // its abbreviation; empty when it has none
};

std::string padded(std::int64_t number, std::size_t width) {
    std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// Texts of four letters are whole names, those of five one letter, shorter ones three.
std::string named(std::string_view name, std::size_t count, std::size_t shortLength) {
    constexpr std::size_t kWhole = 4;
    constexpr std::size_t kNarrow = 5;
    return std::string(name.substr(0, count == kWhole ? name.size() : count == kNarrow ? 1 : shortLength));
}

std::string offset(std::int64_t seconds, std::string_view separator) {
    const std::int64_t size = std::abs(seconds);
    return (seconds < 0 ? "-" : "+") + padded(size / kHour, 2) + std::string(separator) +
           padded(size % kHour / kMinute, 2);
}

std::string fromGreenwich(std::int64_t seconds) {
    return seconds == 0 ? "GMT" : "GMT" + offset(seconds, ":");
}

std::string zoneName(const Fields& fields, std::size_t count) {
    return count < 4 && !fields.zone.empty() ? fields.zone : fromGreenwich(fields.secondsFromGMT);
}

std::string zoneOffset(std::int64_t seconds, std::size_t count) {
    switch (count) {
    case 4: return fromGreenwich(seconds);
    case 5: return seconds == 0 ? "Z" : offset(seconds, ":");
    default: return offset(seconds, "");
    }
}

std::string yearText(const Fields& fields, std::size_t count) {
    const auto number = static_cast<int>(fields.date.year());
    return count == 2 ? padded(number % 100, 2) : padded(number, count);
}

std::string monthText(const Fields& fields, std::size_t count) {
    const auto number = static_cast<unsigned>(fields.date.month());
    return count < 3 || count > 5 ? padded(number, count) : named(kMonths[number - 1], count, 3);
}

std::string fraction(std::int64_t millisecond, std::size_t count) {
    std::string digits = padded(millisecond, 3);
    digits.resize(count, '0');
    return digits;
}

// The hour of half a day as clocks show it, 12 first.
std::int64_t ofTwelve(std::int64_t hour) {
    return hour % 12 == 0 ? 12 : hour % 12;
}

// What `count` times `letter` stands for.
std::string field(char16_t letter, std::size_t count, const Fields& fields) {
    switch (letter) {
    case u'y': return yearText(fields, count);
    case u'M': return monthText(fields, count);
    case u'd': return padded(static_cast<unsigned>(fields.date.day()), count);
    case u'E': return named(kWeekdays[fields.weekday], count, count == 6 ? 2 : 3);
    case u'a': return fields.hour < 12 ? "AM" : "PM";
    case u'h': return padded(ofTwelve(fields.hour), count);
    case u'H': return padded(fields.hour, count);
    case u'k': return padded(fields.hour == 0 ? 24 : fields.hour, count);
    case u'K': return padded(fields.hour % 12, count);
    case u'm': return padded(fields.minute, count);
    case u's': return padded(fields.second, count);
    case u'S': return fraction(fields.millisecond, count);
    case u'z': return zoneName(fields, count);
    case u'Z': return zoneOffset(fields.secondsFromGMT, count);
    default: return {};
    }
}

constexpr bool isLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// The text in '...' that begins at `position`; moves that behind its end. A text that is never closed goes to the end.
std::u16string quoted(std::u16string_view pattern, std::size_t& position) {
    std::u16string text;
    bool isOpen = false;
    while (position < pattern.size()) {
        if (pattern[position] != u'\'') {
            if (!isOpen) {
                break;
            }
            text += pattern[position++];
        } else if (position + 1 < pattern.size() && pattern[position + 1] == u'\'') {
            text += u'\'';
            position += 2;
        } else {
            ++position;
            isOpen = !isOpen;
        }
    }
    return text;
}

NSString formatted(std::u16string_view pattern, const Fields& fields) {
    NSMutableString text;
    std::size_t position = 0;
    while (position < pattern.size()) {
        const char16_t unit = pattern[position];
        if (unit == u'\'') {
            text.append(quoted(pattern, position));
        } else if (isLetter(unit)) {
            const std::size_t end = std::min(pattern.find_first_not_of(unit, position), pattern.size());
            text.append(NSString::fromUTF8Lossy(field(unit, end - position, fields)));
            position = end;
        } else {
            text.append(unit);
            ++position;
        }
    }
    return text.copy();
}

// Nothing outside of the calendar's four-digit years.
std::optional<Fields> fieldsOf(const NSDate& date, const NSTimeZone& zone) {
    constexpr double kBeyond = 1e12; // more seconds than those years have
    const double exact = date.timeIntervalSince1970();
    if (!(std::abs(exact) < kBeyond)) {
        return std::nullopt;
    }
    const auto whole = static_cast<std::int64_t>(std::floor(exact));
    Fields fields;
    fields.secondsFromGMT = zone.secondsFromGMTForDate(date);
    if (!(std::abs(static_cast<double>(fields.secondsFromGMT)) < kBeyond)) {
        return std::nullopt;
    }
    const sys_seconds local(seconds(whole + fields.secondsFromGMT));
    const sys_days day = floor<days>(local);
    // Days are compared, not dates: a date has no room for years far away.
    if (day < sys_days(year(1) / January / 1) || day > sys_days(year(9999) / December / 31)) {
        return std::nullopt;
    }
    const hh_mm_ss time(local - day);
    fields.date = day;
    fields.weekday = weekday(day).c_encoding();
    fields.hour = time.hours().count();
    fields.minute = time.minutes().count();
    fields.second = time.seconds().count();
    // Counted from 1970 and not from the second: a fraction such as .123 then comes out as it was written.
    fields.millisecond = std::clamp<std::int64_t>(
        static_cast<std::int64_t>(std::floor(exact * kThousand)) - whole * kThousand, 0, kThousand - 1);
    fields.zone = zone.abbreviationForDate(date).value_or(NSString()).utf8Lossy();
    return fields;
}

} // namespace

NSDateFormatter::NSDateFormatter() : timeZone_(NSTimeZone::UTC()) {}

const ClassDescription& NSDateFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSDateFormatter>("NSDateFormatter", NSFormatter::describedClass())
            .property("dateFormat", &NSDateFormatter::dateFormat, &NSDateFormatter::setDateFormat)
            .method("stringFromDate:", &NSDateFormatter::stringFromDate)
            .build();
    return description;
}

const ClassDescription& NSDateFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<NSDateFormatter> NSDateFormatter::init() {
    return allocate<NSDateFormatter>();
}

NSString NSDateFormatter::stringFromDate(const NSDate& date) const {
    const std::optional<Fields> fields = fieldsOf(date, timeZone_);
    return fields.has_value() ? formatted(dateFormat_.units(), *fields) : NSString();
}

std::optional<NSString> NSDateFormatter::stringForObjectValue(const std::optional<Value>& objectValue) const {
    const NSDate* date = objectValue.has_value() ? objectValue->as<NSDate>() : nullptr;
    return date != nullptr ? std::optional(stringFromDate(*date)) : std::nullopt;
}

} // namespace qk
