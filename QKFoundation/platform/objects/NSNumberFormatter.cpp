// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSNumberFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace qk {
namespace {

// How many ASCII digits `text` begins with; they are taken off it.
std::size_t takeDigits(std::u16string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && text[count] >= u'0' && text[count] <= u'9') {
        ++count;
    }
    text.remove_prefix(count);
    return count;
}

bool take(std::u16string_view& text, std::u16string_view oneOf) {
    const bool found = !text.empty() && oneOf.find(text.front()) != std::u16string_view::npos;
    text.remove_prefix(found ? 1 : 0);
    return found;
}

enum class Form { None, Integer, Floating };

// What the whole text is written as.
Form formOf(std::u16string_view text) {
    take(text, u"+-");
    std::size_t digits = takeDigits(text);
    Form form = Form::Integer;
    if (take(text, u".")) {
        digits += takeDigits(text);
        form = Form::Floating;
    }
    if (digits == 0) {
        return Form::None;
    }
    if (take(text, u"eE")) {
        take(text, u"+-");
        if (takeDigits(text) == 0) {
            return Form::None;
        }
        form = Form::Floating;
    }
    return text.empty() ? form : Form::None;
}

template <typename Integer>
std::optional<Value> integerIn(std::string_view digits) {
    Integer number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() ? std::optional<Value>(number) : std::nullopt;
}

// Integers of up to 64 bits, signed or not; the nearest floating number beyond.
Value integerOrNearest(const NSString& text) {
    std::string digits = text.utf8Lossy();
    if (digits.starts_with('+')) {
        digits.erase(0, 1);
    }
    if (const auto number = integerIn<std::int64_t>(digits)) {
        return *number;
    }
    return integerIn<std::uint64_t>(digits).value_or(text.doubleValue());
}

} // namespace

const ClassDescription& NSNumberFormatter::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSNumberFormatter>("NSNumberFormatter", NSFormatter::describedClass()).build();
    return description;
}

const ClassDescription& NSNumberFormatter::classDescription() const {
    return describedClass();
}

std::shared_ptr<NSNumberFormatter> NSNumberFormatter::init() {
    return allocate<NSNumberFormatter>();
}

std::optional<NSString> NSNumberFormatter::stringForObjectValue(const std::optional<Value>& objectValue) const {
    const NSNumber* number = objectValue.has_value() ? objectValue->as<NSNumber>() : nullptr;
    return number != nullptr ? std::optional(number->stringValue()) : std::nullopt;
}

bool NSNumberFormatter::getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                                       std::optional<NSString>& /*errorDescription*/) const {
    const NSString text = forString.stringByTrimmingWhitespace();
    if (text.isEmpty()) {
        objectValue.reset();
        return true;
    }
    switch (formOf(text.units())) {
    case Form::Integer: objectValue = integerOrNearest(text); return true;
    case Form::Floating: objectValue = text.doubleValue(); return true;
    case Form::None: break;
    }
    return false;
}

} // namespace qk
