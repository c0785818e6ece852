// SPDX-License-Identifier: Apache-2.0
// Long editing sessions at random: the formatters against the model, and what holds after each edit.
#include "QKFoundation/formatters/QKIDNameIPFormatter.h"
#include "QKFoundation/formatters/QKInstantSupportIdFormatter.h"
#include "QKFoundation/formatters/QKPasswordObfuscator.h"
#include "QKFoundation/formatters/QKTFAFormatter.h"

#include "tests/formatters/CaretModel.h"
#include "tests/formatters/Editing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qk {
namespace {

struct Subject {
    std::shared_ptr<QKIDFormatterBase> formatter;
    CaretModel model;
};

std::vector<Subject> subjects() {
    return {{QKIDFormatter::init(), CaretModel::partnerID()},
            {QKIDNameIPFormatter::init(), CaretModel::partnerID()},
            {QKMeetingIDFormatter::init(), CaretModel::meetingID(u'm')},
            {QKInstantSupportIdFormatter::init(), CaretModel::meetingID(u's')}};
}

// A text of up to `longest` characters, digits and separators most of all.
NSString anyText(int longest) {
    const auto length = static_cast<std::size_t>(*rc::gen::inRange(0, longest + 1));
    const auto unit = rc::gen::weightedOneOf<char16_t>(
        {{12, rc::gen::cast<char16_t>(rc::gen::inRange(int{'0'}, int{'9'} + 1))},
         {3, rc::gen::element<char16_t>(u' ', u'-')},
         {2, rc::gen::element<char16_t>(u'm', u's', u'x', u'.', u'\t', 0xFF11, 0xD83D, 0xDE00, 0)}});
    return NSString(*rc::gen::container<std::u16string>(length, unit));
}

// Digits and blanks alone: what every formatter of the family takes for an identifier.
NSString digitsAndBlanks(int longest) {
    const auto length = static_cast<std::size_t>(*rc::gen::inRange(0, longest + 1));
    return NSString(*rc::gen::container<std::u16string>(
        length, rc::gen::weightedElement<char16_t>({{9, u'7'}, {9, u'1'}, {2, u' '}})));
}

std::uint64_t upTo(std::uint64_t limit) {
    return *rc::gen::inRange<std::uint64_t>(0, limit + 1);
}

NSRange anyRangeIn(const NSString& string) {
    const std::uint64_t location = upTo(string.length());
    return {location, upTo(string.length() - location)};
}

bool isName(const Subject& subject, const NSString& proposed) {
    const auto* names = dynamic_cast<const QKIDNameIPFormatter*>(subject.formatter.get());
    return names != nullptr && rangeOfCharacterFromSet(proposed, *names->validIDOnlyCharacterSet()).has_value();
}

// What holds of every answer, whatever the edit was.
void checkAnswer(const Subject& subject, const NSString& proposed, const Judged& judged) {
    RC_ASSERT(judged.selection.location <= judged.text.length());
    if (proposed.isEmpty() || isName(subject, proposed)) {
        RC_ASSERT(judged.isValid);
        RC_ASSERT(judged.text == proposed);
        return;
    }
    RC_ASSERT(!judged.isValid);
    const bool isReplaced = judged.text.storage() != proposed.storage();
    RC_ASSERT(isReplaced);
    RC_ASSERT(CaretModel::digits(judged.text.units()) ==
              CaretModel::digits(proposed.units()).substr(0, subject.model.longest));
    RC_ASSERT(subject.formatter->validateID(judged.text) == judged.text);
}

RC_GTEST_PROP(IDFormatters, AnyEditIsAnsweredAsTheModelSays, ()) {
    const auto all = subjects();
    const Subject& subject = all[upTo(all.size() - 1)];
    const NSString original = anyText(16);
    const NSString proposed = anyText(16);
    const std::uint64_t caret = upTo(proposed.length());
    const NSRange selection = anyRangeIn(original);
    const Judged judged = judge(*subject.formatter, proposed, {caret, 0}, original, selection);
    checkAnswer(subject, proposed, judged);
    if (!isName(subject, proposed)) {
        const Judged expected = subject.model.judge(proposed, caret, original, selection);
        RC_ASSERT(judged.text == expected.text);
        RC_ASSERT(judged.selection.location == expected.selection.location);
    }
}

// One edit as a user makes it: typing, pasting over a selection, deleting to either side.
NSString proposedByUser(const Field& field, NSRange& replaced, std::uint64_t& caret) {
    NSString typed;
    replaced = {upTo(field.text.length()), 0};
    switch (*rc::gen::inRange(0, 6)) {
    case 0: // backspace
        replaced = {replaced.location - (replaced.location > 0 ? 1 : 0), replaced.location > 0 ? 1U : 0U};
        break;
    case 1: // delete
        replaced.length = replaced.location < field.text.length() ? 1 : 0;
        break;
    case 2: // cut
        replaced = anyRangeIn(field.text);
        break;
    case 3: // paste over a selection
        replaced = anyRangeIn(field.text);
        typed = anyText(14);
        break;
    case 4: // type at the end
        replaced.location = field.text.length();
        typed = digitsAndBlanks(1);
        break;
    default: typed = anyText(1); break;
    }
    caret = replaced.location + typed.length();
    return field.text.substringToIndex(replaced.location) + typed +
           field.text.substringFromIndex(replaced.location + replaced.length);
}

RC_GTEST_PROP(IDFormatters, LongSessionsStayInOrder, ()) {
    for (const Subject& subject : subjects()) {
        Field field;
        const int edits = *rc::gen::inRange(0, 60);
        for (int edit = 0; edit < edits; ++edit) {
            NSRange replaced;
            std::uint64_t caret = 0;
            const NSString proposed = proposedByUser(field, replaced, caret);
            const Judged judged = judge(*subject.formatter, proposed, {caret, 0}, field.text, replaced);
            checkAnswer(subject, proposed, judged);
            if (!isName(subject, proposed)) {
                const Judged expected = subject.model.judge(proposed, caret, field.text, replaced);
                RC_ASSERT(judged.text == expected.text);
                RC_ASSERT(judged.selection.location == expected.selection.location);
            }
            field.text = judged.text;
        }
    }
}

RC_GTEST_PROP(IDFormatters, TypingAtTheEndIsPastingAtOnce, ()) {
    const NSString digits = digitsAndBlanks(16);
    for (const Subject& subject : subjects()) {
        Field field;
        for (std::size_t index = 0; index < digits.length(); ++index) {
            field.type(*subject.formatter, digits.substring(index, 1));
            RC_ASSERT(field.selection.location == field.text.length());
        }
        const NSString typed(CaretModel::digits(digits.units()));
        RC_ASSERT(digits.isEmpty() || field.text == subject.formatter->validateID(typed));
    }
}

RC_GTEST_PROP(IDFormatters, BackspaceAtTheEndTakesOneDigitOrOneSeparator, ()) {
    const NSString digits = digitsAndBlanks(10);
    for (const Subject& subject : subjects()) {
        Field field;
        field.type(*subject.formatter, digits);
        for (std::size_t count = CaretModel::digits(field.text.units()).size(); count > 0; --count) {
            RC_ASSERT(CaretModel::digits(field.text.units()).size() == count);
            field.backspace(*subject.formatter);
        }
        RC_ASSERT(CaretModel::digits(field.text.units()).empty());
    }
}

RC_GTEST_PROP(NumberFormatters, ShowDigitsAloneAfterAnySession, ()) {
    const auto formatter = QKTFAFormatter::initWithCoder(NSCoder());
    Field field;
    for (int edit = *rc::gen::inRange(0, 60); edit > 0; --edit) {
        const NSString before = field.text;
        const NSRange replaced = anyRangeIn(field.text);
        const bool isValid = field.replace(*formatter, replaced, anyText(3));
        RC_ASSERT(isValid || field.text == before);
        RC_ASSERT(field.text.length() <= 6U);
        RC_ASSERT(CaretModel::digits(field.text.units()) == field.text.units());
    }
}

RC_GTEST_PROP(PasswordObfuscators, ShowAsManyAsterisksAfterAnySession, ()) {
    const auto obfuscator = QKPasswordObfuscator::init();
    for (int edit = *rc::gen::inRange(0, 20); edit > 0; --edit) {
        std::optional<NSString> password;
        if (upTo(4) > 0) {
            password = anyText(12);
        }
        if (upTo(1) == 0) {
            obfuscator->setPrivatePassword(password);
        } else {
            obfuscator->setDisplayPassword(password);
        }
        RC_ASSERT(obfuscator->privatePassword() == password);
        RC_ASSERT(obfuscator->displayPassword() ==
                  obfuscator->obfuscatedPasswordWithLength(password.has_value() ? password->length() : 0));
        RC_ASSERT(obfuscator->copy()->isEqual(obfuscator));
    }
}

} // namespace
} // namespace qk
