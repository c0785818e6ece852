// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"
#include "QKFoundation/platform/values/NSTimeZone.h"

#include <utility>

namespace qk {

/// Which family of rules a date formatter follows; 10.4 and later have Unicode's patterns.
enum class NSDateFormatterBehavior { Default = 0, Behavior10_0 = 1000, Behavior10_4 = 1040 };

/// `NSDateFormatter`: dates as texts in Unicode's date patterns (UTS #35), in the Gregorian calendar and in English.
class QK_EXPORT NSDateFormatter : public NSFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. UTC, without a pattern.
    [[nodiscard]] static std::shared_ptr<NSDateFormatter> init();

    /// `formatterBehavior`. Kept as it was set: the patterns are Unicode's whatever it is.
    [[nodiscard]] NSDateFormatterBehavior formatterBehavior() const noexcept { return formatterBehavior_; }
    void setFormatterBehavior(NSDateFormatterBehavior behavior) noexcept { formatterBehavior_ = behavior; }

    /// `timeZone`. UTC at first.
    [[nodiscard]] const NSTimeZone& timeZone() const noexcept { return timeZone_; }
    void setTimeZone(NSTimeZone timeZone) noexcept { timeZone_ = std::move(timeZone); }

    /// `dateFormat`. The pattern, "" at first. y M d E a h H k K m s S z Z and texts in '...' are understood ('' is
    /// one '); other letters give nothing, and what is no letter stands for itself.
    [[nodiscard]] const NSString& dateFormat() const noexcept { return dateFormat_; }
    void setDateFormat(NSString format) noexcept { dateFormat_ = std::move(format); }

    /// `stringFromDate:`. `date` in the zone and by the pattern, every field rounded down. "" for a moment outside of
    /// the years 1 to 9999.
    [[nodiscard]] NSString stringFromDate(const NSDate& date) const;

    /// `stringForObjectValue:`. `stringFromDate` of a date; nothing for every other value.
    [[nodiscard]] std::optional<NSString> stringForObjectValue(const std::optional<Value>& objectValue) const override;

protected:
    NSDateFormatter();

private:
    NSDateFormatterBehavior formatterBehavior_ = NSDateFormatterBehavior::Default;
    NSTimeZone timeZone_;
    NSString dateFormat_;
};

} // namespace qk
