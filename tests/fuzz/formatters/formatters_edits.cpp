// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKDateSince1970ValueTransformer.h"
#include "QKFoundation/formatters/QKIDNameIPFormatter.h"
#include "QKFoundation/formatters/QKInstantSupportIdFormatter.h"
#include "QKFoundation/formatters/QKPasswordObfuscator.h"
#include "QKFoundation/formatters/QKStringLengthFormatter.h"
#include "QKFoundation/formatters/QKTFAFormatter.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

/// Sessions of edits of every kind of field. An edit is three bytes and a text: which characters are replaced, by what,
/// and whether the field tells a selection that is not there.
namespace qk {
namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// The input as numbers and texts; zeros and nothing when it is used up.
class Input {
public:
    explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    [[nodiscard]] bool isEmpty() const noexcept { return bytes_.empty(); }

    std::uint8_t byte() {
        if (bytes_.empty()) {
            return 0;
        }
        const std::uint8_t first = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return first;
    }

    /// Bytes stand for themselves, but for the highest ones, which stand for characters that no field expects.
    NSString text() {
        constexpr char16_t kStrange[] = {0, u'\t', 0xA0, 0x301, 0x663, 0xFF11, 0xD83D, 0xDE00}; // NOLINT
        std::u16string units;
        for (std::size_t length = byte() % 20U; length > 0; --length) {
            const std::uint8_t unit = byte();
            units += unit < 0xF8 ? static_cast<char16_t>(unit & 0x7FU) : kStrange[unit - 0xF8U];
        }
        return NSString(units);
    }

private:
    std::span<const std::uint8_t> bytes_;
};

struct Edit {
    NSString proposed;
    NSRange selection;
    NSRange replaced;
};

Edit editOf(const NSString& field, Input& input) {
    Edit edit;
    edit.replaced.location = input.byte() % (field.length() + 1);
    edit.replaced.length = input.byte() % (field.length() - edit.replaced.location + 1);
    const std::uint8_t kind = input.byte();
    const NSString typed = input.text();
    edit.proposed = field.substringToIndex(edit.replaced.location) + typed +
                    field.substringFromIndex(edit.replaced.location + edit.replaced.length);
    edit.selection = {edit.replaced.location + typed.length(), 0};
    if (kind >= 0xF0) { // numbers that no field tells, at every edge of the arithmetic
        edit.selection.location = std::uint64_t{0} - (kind & 7U);
    } else if (kind >= 0xE0) {
        edit.replaced = {std::uint64_t{0} - (kind & 7U), kind & 8U};
    } else if (kind >= 0xD0) {
        edit.selection = {kind & 3U, kind};
    }
    return edit;
}

std::size_t digitsIn(const NSString& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text.units(), [](char16_t unit) { return unit >= u'0' && unit <= u'9'; }));
}

bool isName(const QKIDFormatterBase& formatter, const NSString& text) {
    const auto* names = dynamic_cast<const QKIDNameIPFormatter*>(&formatter);
    return names != nullptr && rangeOfCharacterFromSet(text, *names->validIDOnlyCharacterSet()).has_value();
}

void editIdentifiers(const QKIDFormatterBase& formatter, Input input) {
    NSString field;
    while (!input.isEmpty()) {
        const Edit edit = editOf(field, input);
        NSString shown = edit.proposed;
        NSRange caret = edit.selection;
        std::optional<NSString> error;
        bool isValid = false;
        try {
            isValid = formatter.isPartialStringValid(shown, caret, field, edit.replaced, error);
        } catch (const NSRangeException&) {
            const std::uint64_t length = field.length();
            const bool isOutside =
                edit.replaced.location > length || edit.replaced.length > length - edit.replaced.location;
            require(edit.replaced.length >= 2 && isOutside);
            continue;
        }
        require(!error.has_value() && caret.length == edit.selection.length);
        if (edit.proposed.isEmpty() || isName(formatter, edit.proposed)) {
            require(isValid && shown == edit.proposed && caret == edit.selection);
        } else {
            require(!isValid && caret.location <= shown.length());
            require(formatter.validateID(shown) == shown && shown == formatter.validateID(edit.proposed));
            const std::size_t room = formatter.maximumIDLength() - formatter.baseIDString().length();
            require(digitsIn(shown) == std::min(room, digitsIn(edit.proposed)));
        }
        field = shown;
    }
}

void editNumbers(Input input) {
    const auto formatter = QKTFAFormatter::initWithCoder(NSCoder());
    NSString field;
    while (!input.isEmpty()) {
        const Edit edit = editOf(field, input);
        NSString shown = edit.proposed;
        NSRange caret = edit.selection;
        std::optional<NSString> error;
        const bool isValid = formatter->isPartialStringValid(shown, caret, field, edit.replaced, error);
        require(shown == edit.proposed && caret == edit.selection && !error.has_value());
        require(isValid == (shown.length() <= 6 && digitsIn(shown) == shown.length()));
        if (isValid) {
            field = shown;
            std::optional<Value> number;
            require(formatter->getObjectValue(number, field, error) && number.has_value() != field.isEmpty());
        }
    }
}

void showLengthsAndDates(Input input) {
    const auto badge = QKStringLengthFormatter::init();
    const auto dates = QKDateSince1970ValueTransformer::init();
    while (!input.isEmpty()) {
        const NSString text = input.text();
        const auto shown = badge->stringForObjectValue(text);
        require(shown == (text.length() <= 2 ? text : NSString("99+")));
        const std::int64_t milliseconds = text.integerValue();
        const auto date = dates->transformedValue(milliseconds);
        require(date.has_value() == (milliseconds != 0 && milliseconds != INT64_MAX));
        require(dates->reverseTransformedValue(date)->as<NSNumber>() != nullptr);
    }
}

void editPasswords(Input input) {
    const auto obfuscator = QKPasswordObfuscator::init();
    while (!input.isEmpty()) {
        const std::uint8_t kind = input.byte();
        const std::optional<NSString> password = kind % 3 == 0 ? std::nullopt : std::optional(input.text());
        if (kind % 2 == 0) {
            obfuscator->setDisplayPassword(password);
        } else {
            obfuscator->setPrivatePassword(password);
        }
        require(obfuscator->privatePassword() == password);
        require(obfuscator->displayPassword() ==
                NSString(std::u16string(password.has_value() ? password->length() : 0, u'*')));
    }
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qk::Input input(std::span(data, size));
    qk::editIdentifiers(*qk::QKIDFormatter::init(), input);
    qk::editIdentifiers(*qk::QKIDNameIPFormatter::init(), input);
    qk::editIdentifiers(*qk::QKMeetingIDFormatter::init(), input);
    qk::editIdentifiers(*qk::QKInstantSupportIdFormatter::init(), input);
    qk::editNumbers(input);
    qk::showLengthsAndDates(input);
    qk::editPasswords(input);
    return 0;
}
