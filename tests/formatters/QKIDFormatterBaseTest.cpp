// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKIDFormatterBase.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include "tests/formatters/Editing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

/// A formatter whose constants a test chooses.
class Choosable : public QKIDFormatterBase {
public:
    static std::shared_ptr<Choosable> init() { return QKIDFormatterBase::init<Choosable>(); }

    void selfSetup() override {
        ++setups;
        setNonIDCharacterSet(NSCharacterSet::characterSetWithCharactersInString("1234567890").invertedSet());
    }
    NSString separator() const override { return mark; }
    std::uint64_t firstSeparatorIndex() const override { return first; }
    std::uint64_t secondSeparatorIndex() const override { return second; }
    std::uint64_t thirdSeparatorIndex() const override { return third; }
    std::uint64_t maximumIDLength() const override { return longest; }
    NSString baseIDString() const override { return prefix; }

    int setups = 0;
    NSString mark = " ";
    std::uint64_t first = 3;
    std::uint64_t second = 6;
    std::uint64_t third = 9;
    std::uint64_t longest = 10;
    NSString prefix;
};

/// A subclass that forgets the third position.
class Forgetful : public Choosable {
public:
    static std::shared_ptr<Forgetful> init() { return QKIDFormatterBase::init<Forgetful>(); }
    std::uint64_t thirdSeparatorIndex() const override { return QKIDFormatterBase::thirdSeparatorIndex(); }
};

TEST(QKIDFormatterBase, HasNoCharactersAndNoConstants) {
    const auto base = QKIDFormatterBase::init();
    EXPECT_FALSE(base->nonIDCharacterSet().has_value());
    EXPECT_EQ(base->thirdSeparatorIndex(), 0U);
    EXPECT_THROW((void)base->separator(), NSInvalidArgumentException);
    EXPECT_THROW((void)base->firstSeparatorIndex(), NSInvalidArgumentException);
    EXPECT_THROW((void)base->secondSeparatorIndex(), NSInvalidArgumentException);
    EXPECT_THROW((void)base->maximumIDLength(), NSInvalidArgumentException);
    EXPECT_THROW((void)base->baseIDString(), NSInvalidArgumentException);
    EXPECT_THROW((void)base->validateID("1"), NSInvalidArgumentException);
    EXPECT_THROW((void)judge(*base, "1", {1, 0}, "", {}), NSInvalidArgumentException);
    EXPECT_THROW((void)base->valueForKey("separator"), NSInvalidArgumentException);
    EXPECT_THROW(base->performSelector("baseIDString"), NSInvalidArgumentException);
}

TEST(QKIDFormatterBase, AbstractGetterNamesItselfAndAnswersNothingWhereThatReturns) {
    class Lenient : public QKIDFormatterBase {
    public:
        void doesNotRecognizeSelector(const NSString& selector) const override { asked.push_back(selector); }
        mutable std::vector<NSString> asked;
    };
    const auto lenient = QKIDFormatterBase::init<Lenient>();
    EXPECT_EQ(lenient->separator(), "");
    EXPECT_EQ(lenient->firstSeparatorIndex(), 0U);
    EXPECT_EQ(lenient->secondSeparatorIndex(), 0U);
    EXPECT_EQ(lenient->maximumIDLength(), 0U);
    EXPECT_EQ(lenient->baseIDString(), "");
    EXPECT_EQ(lenient->asked, (std::vector<NSString>{"separator", "firstSeparatorIndex", "secondSeparatorIndex",
                                                     "maximumIDLength", "baseIDString"}));
}

TEST(QKIDFormatterBase, EmptyTextIsAcceptedUntouched) {
    EXPECT_EQ(judge(*Choosable::init(), "", {0, 0}, "1 234", {0, 5}), accepted("", 0));
    EXPECT_EQ(judge(*Choosable::init(), "", {7, 3}, "1 234", {0, 5}), (Judged{true, "", {7, 3}}));
    EXPECT_EQ(judge(*QKIDFormatterBase::init(), "", {0, 0}, "", {}), accepted("", 0));
}

TEST(QKIDFormatterBase, InitSetsUpOnceAndAwakeningOnceMore) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->setups, 1);
    EXPECT_TRUE(formatter->nonIDCharacterSet().has_value());
    formatter->awakeFromNib();
    EXPECT_EQ(formatter->setups, 2);
    QKIDFormatterBase::init()->awakeFromNib();
}

TEST(QKIDFormatterBase, WithoutCharactersTheIdentifierIsThePrefix) {
    const auto formatter = Choosable::init();
    formatter->setNonIDCharacterSet(std::nullopt);
    EXPECT_EQ(formatter->validateID("12345"), "");
    EXPECT_EQ(judge(*formatter, "12", {1, 0}, "1", {1, 0}), corrected("", 0));
    formatter->prefix = "id";
    EXPECT_EQ(formatter->validateID("12345"), "id");
    EXPECT_EQ(judge(*formatter, "12345", {1, 0}, "1234", {1, 0}), corrected("id", 1));
    EXPECT_EQ(judge(*formatter, "12345", {4, 0}, "1234", {4, 0}), corrected("id", 2));
}

TEST(QKIDFormatterBase, GroupsCountFromTheRight) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->validateID(""), "");
    EXPECT_EQ(formatter->validateID("1"), "1");
    EXPECT_EQ(formatter->validateID("123"), "123");
    EXPECT_EQ(formatter->validateID("1234"), "1 234");
    EXPECT_EQ(formatter->validateID("123456"), "123 456");
    EXPECT_EQ(formatter->validateID("1234567"), "1 234 567");
    EXPECT_EQ(formatter->validateID("123456789"), "123 456 789");
    EXPECT_EQ(formatter->validateID("1234567890"), "1 234 567 890");
}

TEST(QKIDFormatterBase, CutsToTheFirstCharactersWithThePrefixCounted) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->validateID("12345678901"), "1 234 567 890");
    formatter->prefix = "id";
    EXPECT_EQ(formatter->validateID("1"), "id1");
    EXPECT_EQ(formatter->validateID("1234"), "id1 234");
    EXPECT_EQ(formatter->validateID("123456789012"), "id12 345 678");
}

TEST(QKIDFormatterBase, LimitWithoutRoomForDigitsStillEnds) {
    const auto formatter = Choosable::init();
    formatter->prefix = "prefix";
    formatter->longest = 6;
    EXPECT_EQ(formatter->validateID("12"), "prefix");
    formatter->longest = 3;
    EXPECT_EQ(formatter->validateID("12"), "pre");
    formatter->prefix = "7";
    EXPECT_EQ(formatter->validateID("12345"), "777");
    formatter->longest = 0;
    EXPECT_EQ(formatter->validateID("12345"), "");
}

TEST(QKIDFormatterBase, CutTextGoesThroughTheOverride) {
    class Counting : public Choosable {
    public:
        NSString validateID(const NSString& input) const override {
            ++calls;
            return Choosable::validateID(input);
        }
        mutable int calls = 0;
    };
    const auto formatter = QKIDFormatterBase::init<Counting>();
    EXPECT_EQ(formatter->validateID("12345678901"), "1 234 567 890");
    EXPECT_EQ(formatter->calls, 2);
}

TEST(QKIDFormatterBase, OnlyTheUnitsOfTheSetAreDigits) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->validateID("\uff11\uff12\u0663"
                                    "1"),
              "1")
        << "fullwidth and Arabic digits";
    EXPECT_EQ(formatter->validateID("1\u03012"), "12") << "a combining mark goes, its digit stays";
    EXPECT_EQ(formatter->validateID("\U0001F600"
                                    "7"),
              "7");
    EXPECT_EQ(formatter->validateID("0012"), "0 012");
}

TEST(QKIDFormatterBase, SeparatorOfSeveralCharactersIsPutInButNotCounted) {
    const auto formatter = Choosable::init();
    formatter->mark = "--";
    EXPECT_EQ(formatter->validateID("1234567"), "1--234--567");
    EXPECT_EQ(formatter->countSeperatorInString("1--234--567", 11), 0U);
    formatter->mark = "";
    EXPECT_EQ(formatter->validateID("1234567"), "1234567");
    EXPECT_EQ(formatter->countSeperatorInString("1234567", 7), 0U);
}

TEST(QKIDFormatterBase, CountsSeparatorsInAPrefixOfTheText) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->countSeperatorInString("", 5), 0U);
    EXPECT_EQ(formatter->countSeperatorInString(" 1 2", 0), 0U) << "index 0, even at a separator";
    EXPECT_EQ(formatter->countSeperatorInString(" 1 2", 1), 1U);
    EXPECT_EQ(formatter->countSeperatorInString(" 1 2", 2), 1U);
    EXPECT_EQ(formatter->countSeperatorInString(" 1 2", 3), 2U);
    EXPECT_EQ(formatter->countSeperatorInString(" 1 2", ~std::uint64_t{0}), 2U) << "an index beyond the end";
    EXPECT_EQ(formatter->countSeperatorInString("   ", 2), 2U);
    EXPECT_EQ(formatter->countSeperatorInString("\u00a0\t", 2), 0U);
    EXPECT_EQ(QKIDFormatterBase::init()->countSeperatorInString("", 1), 0U) << "asks for no separator";
}

TEST(QKIDFormatterBase, CountsTheSeparatorsThatALengthNeeds) {
    const auto formatter = Choosable::init();
    const NSString digits = "12345678901234";
    for (std::uint64_t length = 0; length <= digits.length(); ++length) {
        const std::uint64_t expected = length > 9 ? 3 : length > 6 ? 2 : length > 3 ? 1 : 0;
        EXPECT_EQ(formatter->neededSeperatorsInString(digits.substringToIndex(length), length), expected) << length;
        EXPECT_EQ(formatter->neededSeperatorsInString(digits.substringToIndex(length), ~std::uint64_t{0}), expected);
    }
}

TEST(QKIDFormatterBase, CountsNeededSeparatorsUpToAnIndex) {
    const auto formatter = Choosable::init(); // ten digits: positions 1, 4 and 7
    const NSString ten = "1234567890";
    EXPECT_EQ(formatter->neededSeperatorsInString(ten, 0), 0U);
    EXPECT_EQ(formatter->neededSeperatorsInString(ten, 1), 1U);
    EXPECT_EQ(formatter->neededSeperatorsInString(ten, 3), 1U);
    EXPECT_EQ(formatter->neededSeperatorsInString(ten, 4), 2U);
    EXPECT_EQ(formatter->neededSeperatorsInString(ten, 7), 3U);
    EXPECT_EQ(formatter->neededSeperatorsInString("1234567", 0), 0U); // positions 1 and 4
    EXPECT_EQ(formatter->neededSeperatorsInString("1234567", 1), 1U);
    EXPECT_EQ(formatter->neededSeperatorsInString("1234567", 4), 2U);
    EXPECT_EQ(formatter->neededSeperatorsInString("1234", 0), 0U); // position 1
    EXPECT_EQ(formatter->neededSeperatorsInString("1234", 1), 1U);
}

TEST(QKIDFormatterBase, ForgottenThirdPositionIsTheEndOfTheText) {
    const auto formatter = Forgetful::init();
    // The positions 3 and, for nothing, 0: "1 234" and one more at the index that was the length.
    EXPECT_EQ(formatter->validateID("1234"), "1 23 4");
    EXPECT_EQ(formatter->validateID("12"), "12 ");
    // 1 - 0 <= 1 holds; 1 - 6 and 1 - 3 wrap to numbers that no index reaches.
    EXPECT_EQ(formatter->neededSeperatorsInString("1", 1), 1U);
    EXPECT_EQ(formatter->neededSeperatorsInString("1", ~std::uint64_t{0}), 3U);
    EXPECT_EQ(formatter->neededSeperatorsInString("", 0), 0U);
}

TEST(QKIDFormatterBase, PositionOutsideOfTheTextRaises) {
    const auto formatter = Choosable::init();
    formatter->prefix = "p";
    formatter->third = ~std::uint64_t{0}; // plus the prefix it wraps to 0, which every length exceeds
    EXPECT_THROW((void)formatter->validateID("1"), NSRangeException);
}

TEST(QKIDFormatterBase, SelectionOutsideOfTheOriginalTextRaisesOnlyWhereItIsLookedAt) {
    const auto formatter = Choosable::init();
    EXPECT_THROW((void)judge(*formatter, "123", {0, 0}, "1 234", {4, 2}), NSRangeException);
    EXPECT_THROW((void)judge(*formatter, "123", {0, 0}, "1 234", {6, 2}), NSRangeException);
    EXPECT_THROW((void)judge(*formatter, "123", {0, 0}, "1 234", {NSNotFound, ~std::uint64_t{0}}), NSRangeException);
    EXPECT_EQ(judge(*formatter, "123", {3, 0}, "1 234", {9, 9}), corrected("123", 3)) << "at the end";
    EXPECT_EQ(judge(*formatter, "12", {1, 0}, "123", {9, 9}), corrected("12", 1)) << "no separator lost";
}

TEST(QKIDFormatterBase, EditOfTheOriginalItselfIsTakenAsItWas) {
    NSString field = "1 234";
    NSRange selection{2, 0};
    std::optional<NSString> error;
    EXPECT_FALSE(Choosable::init()->isPartialStringValid(field, selection, field, {0, 0}, error));
    EXPECT_EQ(field, "1 234");
    EXPECT_EQ(selection, (NSRange{2, 0}));
    EXPECT_EQ(error, std::nullopt);
}

TEST(QKIDFormatterBase, EqualTextIsReplacedAllTheSame) {
    class Lazy : public Choosable {
    public:
        NSString validateID(const NSString& input) const override { return input; }
    };
    const NSString proposed = "1 234";
    EXPECT_EQ(judge(*Choosable::init(), proposed, {2, 0}, "1 23", {2, 0}).text, proposed);
    EXPECT_NE(judge(*Choosable::init(), proposed, {2, 0}, "1 23", {2, 0}).text.storage(), proposed.storage());
    EXPECT_NE(judge(*QKIDFormatterBase::init<Lazy>(), proposed, {2, 0}, "", {}).text.storage(), proposed.storage());
}

TEST(QKIDFormatterBase, ValueOfAFieldIsItsText) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->stringForObjectValue(std::nullopt), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(12), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue("any text"), "any text");
    EXPECT_EQ(formatter->attributedStringForObjectValue(std::nullopt, {}), std::nullopt);
    EXPECT_EQ(formatter->attributedStringForObjectValue("a", {{"bold", true}}),
              NSAttributedString("a", {{"bold", true}}));
    std::optional<Value> value;
    std::optional<NSString> error;
    EXPECT_TRUE(formatter->getObjectValue(value, "any text", error));
    EXPECT_EQ(value, Value("any text"));
    EXPECT_TRUE(formatter->getObjectValue(value, "", error));
    EXPECT_EQ(value, Value(""));
    EXPECT_EQ(error, std::nullopt);
}

TEST(QKIDFormatterBase, IsDescribed) {
    const auto formatter = Choosable::init();
    EXPECT_EQ(formatter->valueForKey("maximumIDLength"), Value(10));
    EXPECT_EQ(formatter->performSelector("validateID:", std::vector<std::optional<Value>>{"1234"}), Value("1 234"));
    EXPECT_EQ(
        formatter->performSelector("countSeperatorInString:toIndex:", std::vector<std::optional<Value>>{"1 2", 3}),
        Value(1));
    EXPECT_TRUE(formatter->respondsToSelector("neededSeperatorsInString:atIndex:"));
    EXPECT_TRUE(formatter->respondsToSelector("selfSetup"));
    EXPECT_EQ(formatter->classDescription().name(), "QKIDFormatterBase");
}

} // namespace
} // namespace qk
