// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKIDFormatterBase.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace qk {
namespace {

constexpr std::size_t kUsualSeparators = 3; // room for as many of one character

// `string` without the characters of `range`; raises when they are not all there.
NSString without(const NSString& string, NSRange range) {
    const std::u16string_view units = string.units();
    if (range.location > units.size() || range.length > units.size() - range.location) {
        throw NSRangeException("the selection " + NSString::fromUnsignedInteger(range.location) + ", " +
                               NSString::fromUnsignedInteger(range.length) + " lies outside of a text of " +
                               NSString::fromUnsignedInteger(units.size()) + " characters");
    }
    return NSString(units.substr(0, range.location)) + NSString(units.substr(range.location + range.length));
}

// Unsigned, as is all arithmetic here: the differences may wrap.
std::uint64_t positionsUpTo(std::uint64_t index, std::uint64_t length,
                            std::initializer_list<std::uint64_t> boundaries) {
    return static_cast<std::uint64_t>(
        std::ranges::count_if(boundaries, [&](std::uint64_t boundary) { return length - boundary <= index; }));
}

void insert(const NSString& separator, std::uint64_t index, std::u16string& text) {
    if (index > text.size()) {
        throw NSRangeException("a separator at " + NSString::fromUnsignedInteger(index) + " lies outside of " +
                               NSString(text));
    }
    text.insert(index, separator.units());
}

} // namespace

const ClassDescription& QKIDFormatterBase::describedClass() {
    using Self = QKIDFormatterBase;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKIDFormatterBase", NSFormatter::describedClass())
            .property("separator", &Self::separator)
            .property("firstSeparatorIndex", &Self::firstSeparatorIndex)
            .property("secondSeparatorIndex", &Self::secondSeparatorIndex)
            .property("thirdSeparatorIndex", &Self::thirdSeparatorIndex)
            .property("maximumIDLength", &Self::maximumIDLength)
            .property("baseIDString", &Self::baseIDString)
            .method("separator", &Self::separator)
            .method("firstSeparatorIndex", &Self::firstSeparatorIndex)
            .method("secondSeparatorIndex", &Self::secondSeparatorIndex)
            .method("thirdSeparatorIndex", &Self::thirdSeparatorIndex)
            .method("maximumIDLength", &Self::maximumIDLength)
            .method("baseIDString", &Self::baseIDString)
            .method("awakeFromNib", &Self::awakeFromNib)
            .method("selfSetup", &Self::selfSetup)
            .method("validateID:", &Self::validateID)
            .method("countSeperatorInString:toIndex:", &Self::countSeperatorInString)
            .method("neededSeperatorsInString:atIndex:", &Self::neededSeperatorsInString)
            .build();
    return description;
}

const ClassDescription& QKIDFormatterBase::classDescription() const {
    return describedClass();
}

void QKIDFormatterBase::awakeFromNib() {
    selfSetup();
}

void QKIDFormatterBase::selfSetup() {}

NSString QKIDFormatterBase::separator() const {
    doesNotRecognizeSelector("separator");
    return {};
}

std::uint64_t QKIDFormatterBase::firstSeparatorIndex() const {
    doesNotRecognizeSelector("firstSeparatorIndex");
    return 0;
}

std::uint64_t QKIDFormatterBase::secondSeparatorIndex() const {
    doesNotRecognizeSelector("secondSeparatorIndex");
    return 0;
}

std::uint64_t QKIDFormatterBase::thirdSeparatorIndex() const {
    return 0;
}

std::uint64_t QKIDFormatterBase::maximumIDLength() const {
    doesNotRecognizeSelector("maximumIDLength");
    return 0;
}

NSString QKIDFormatterBase::baseIDString() const {
    doesNotRecognizeSelector("baseIDString");
    return {};
}

std::optional<NSString> QKIDFormatterBase::stringForObjectValue(const std::optional<Value>& objectValue) const {
    const NSString* text = objectValue.has_value() ? objectValue->as<NSString>() : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<NSAttributedString>
QKIDFormatterBase::attributedStringForObjectValue(const std::optional<Value>& objectValue,
                                                  const NSDictionary& withDefaultAttributes) const {
    const NSString* text = objectValue.has_value() ? objectValue->as<NSString>() : nullptr;
    return text != nullptr ? std::optional<NSAttributedString>(std::in_place, *text, withDefaultAttributes)
                           : std::nullopt;
}

bool QKIDFormatterBase::getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                                       std::optional<NSString>& /*errorDescription*/) const {
    objectValue = forString;
    return true;
}

NSString QKIDFormatterBase::digitsOf(const NSString& string) const {
    return nonIDCharacterSet_.has_value() ? stringByRemovingCharactersInSet(string, *nonIDCharacterSet_) : NSString();
}

NSString QKIDFormatterBase::validateID(const NSString& input) const {
    return formattedID(input, SeparatorPlaces::FromTheRight);
}

NSString QKIDFormatterBase::formattedID(const NSString& input, SeparatorPlaces places) const {
    NSString prefix = baseIDString();
    if (!nonIDCharacterSet_.has_value()) {
        return prefix;
    }
    std::u16string text;
    text.reserve(prefix.length() + input.length() + kUsualSeparators);
    text.append(prefix.units());
    std::ranges::copy_if(input.units(), std::back_inserter(text),
                         [&](char16_t unit) { return !nonIDCharacterSet_->characterIsMember(unit); });
    const std::uint64_t length = text.size();
    if (const std::uint64_t limit = maximumIDLength(); length > limit) {
        const NSString longest(std::u16string_view(text).substr(0, limit));
        // A limit that leaves no room beside the prefix is never met: cutting ends where it changes nothing more.
        return longest == input ? longest : validateID(longest);
    }
    std::uint64_t ordinal = 0;
    for (const std::uint64_t boundary : {firstSeparatorIndex(), secondSeparatorIndex(), thirdSeparatorIndex()}) {
        ++ordinal;
        if (length > boundary + prefix.length()) {
            const std::uint64_t index =
                places == SeparatorPlaces::FromTheRight ? length - boundary : boundary + ordinal;
            insert(separator(), index, text);
        }
    }
    return NSString(text);
}

std::uint64_t QKIDFormatterBase::countSeperatorInString(const NSString& string, std::uint64_t toIndex) const {
    const std::u16string_view searched = string.units().substr(0, toIndex);
    if (searched.empty()) {
        return 0;
    }
    const NSString mark = separator();
    return mark.length() == 1 ? static_cast<std::uint64_t>(std::ranges::count(searched, mark.units().front())) : 0;
}

std::uint64_t QKIDFormatterBase::neededSeperatorsInString(const NSString& string, std::uint64_t atIndex) const {
    const std::uint64_t length = string.length();
    const std::uint64_t first = firstSeparatorIndex();
    const std::uint64_t second = secondSeparatorIndex();
    const std::uint64_t third = thirdSeparatorIndex();
    if (length > third) {
        return positionsUpTo(atIndex, length, {third, second, first});
    }
    if (length > second) {
        return positionsUpTo(atIndex, length, {second, first});
    }
    return length > first ? positionsUpTo(atIndex, length, {first}) : 0;
}

std::uint64_t QKIDFormatterBase::locationAfterLosing(const Edit& edit, std::uint64_t location) const {
    const std::uint64_t lost = edit.needed - edit.neededNow;
    if (edit.selection.length >= 2) {
        const NSString rest = without(edit.original, edit.selection);
        const std::uint64_t neededByRest = neededSeperatorsInString(digitsOf(rest), rest.length());
        return neededByRest < edit.neededNow ? location + neededByRest - edit.neededNow : location;
    }
    if (location < lost) {
        return 0;
    }
    const std::uint64_t before =
        countSeperatorInString(edit.original, edit.selection.location + edit.original.length());
    const std::uint64_t difference = before - countSeperatorInString(edit.formatted, location);
    return difference <= 1 ? location - difference : location + 1 - difference;
}

bool QKIDFormatterBase::isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange,
                                             const NSString& originalString, NSRange originalSelectedRange,
                                             std::optional<NSString>& /*errorDescription*/) const {
    if (partialString.isEmpty()) {
        return true;
    }
    const NSString formatted = validateID(partialString);
    const NSString originalDigits = digitsOf(originalString);
    const NSString digits = digitsOf(formatted);
    const Edit edit{originalString, originalSelectedRange, formatted,
                    neededSeperatorsInString(originalDigits, originalDigits.length()),
                    neededSeperatorsInString(digits, digits.length())};
    std::uint64_t location = proposedSelectedRange.location;
    if (location >= partialString.length()) {
        location = formatted.length();
    } else if (edit.neededNow < edit.needed) {
        location = locationAfterLosing(edit, location);
    } else if (edit.needed < edit.neededNow && location >= 2) {
        location += edit.neededNow - edit.needed;
    }
    proposedSelectedRange.location = std::min<std::uint64_t>(location, formatted.length());
    const bool isTheSame = formatted.storage() == partialString.storage(); // by an override, or a prefix alone
    partialString = isTheSame ? NSString(formatted.units()) : formatted;
    return false;
}

} // namespace qk
