// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKIDFormatter.h"
#include "QKFoundation/formatters/QKIDNameIPFormatter.h"
#include "QKFoundation/formatters/QKInstantSupportIdFormatter.h"
#include "QKFoundation/formatters/QKMeetingIDFormatter.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/formatters/Editing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qk {
namespace {

/// What typing `typed` at once into an empty field shows.
NSString shownFor(const NSFormatter& formatter, std::string_view typed) {
    return judge(formatter, text(typed), {text(typed).length(), 0}, "", {}).text;
}

TEST(QKIDFormatter, EmptyTextIsAccepted) {
    EXPECT_EQ(judge(*QKIDFormatter::init(), "", {0, 0}, "1", {0, 1}), accepted("", 0));
}

TEST(QKIDFormatter, HasTheConstantsOfPartnerIDs) {
    const auto formatter = QKIDFormatter::init();
    EXPECT_EQ(formatter->separator(), " ");
    EXPECT_EQ(formatter->firstSeparatorIndex(), 3U);
    EXPECT_EQ(formatter->secondSeparatorIndex(), 6U);
    EXPECT_EQ(formatter->thirdSeparatorIndex(), 9U);
    EXPECT_EQ(formatter->maximumIDLength(), 10U);
    EXPECT_EQ(formatter->baseIDString(), "");
    EXPECT_EQ(formatter->nonIDCharacterSet(),
              NSCharacterSet::characterSetWithCharactersInString("0123456789").invertedSet());
}

TEST(QKIDFormatter, GroupsTheDigitsInThrees) {
    const auto formatter = QKIDFormatter::init();
    EXPECT_EQ(shownFor(*formatter, "12a34"), "1 234");
    EXPECT_EQ(shownFor(*formatter, "123456789"), "123 456 789");
    EXPECT_EQ(shownFor(*formatter, "1234567890"), "1 234 567 890");
    EXPECT_EQ(shownFor(*formatter, "12345678901"), "1 234 567 890") << "the eleventh digit is dropped";
    EXPECT_EQ(shownFor(*formatter, "0000"), "0 000") << "leading zeros are digits";
    EXPECT_EQ(shownFor(*formatter, "abc"), "");
    EXPECT_EQ(shownFor(*formatter, "\uff11"), "");
}

TEST(QKIDFormatter, AwakeningTwiceChangesNothing) {
    const auto formatter = QKIDFormatter::init();
    const auto before = formatter->nonIDCharacterSet();
    formatter->setNonIDCharacterSet(std::nullopt);
    formatter->awakeFromNib();
    formatter->awakeFromNib();
    EXPECT_EQ(formatter->nonIDCharacterSet(), before);
}

TEST(QKIDNameIPFormatter, EmptyTextIsAccepted) {
    EXPECT_EQ(judge(*QKIDNameIPFormatter::init(), "", {0, 0}, "a", {0, 1}), accepted("", 0));
}

TEST(QKIDNameIPFormatter, AcceptsNamesAndAddressesAsTheyAre) {
    const auto formatter = QKIDNameIPFormatter::init();
    for (const char* name : {"10.0.0.1", "192.168.0.1", "fe80::1", "host-1", "12 34x", "m", "1\t2", "1\u00a02",
                             "\uff11", "\U0001F600", "12345678901234567890."}) {
        EXPECT_EQ(judge(*formatter, text(name), {1, 0}, "1 234", {2, 0}), accepted(text(name), 1)) << name;
    }
}

TEST(QKIDNameIPFormatter, FormatsDigitsAndBlanksAsAPartnerID) {
    const auto formatter = QKIDNameIPFormatter::init();
    EXPECT_EQ(judge(*formatter, "1234", {4, 0}, "123", {3, 0}), corrected("1 234", 5));
    EXPECT_EQ(judge(*formatter, "12 34", {5, 0}, "12 3", {4, 0}), corrected("1 234", 5));
    EXPECT_EQ(judge(*formatter, "  ", {2, 0}, " ", {1, 0}), corrected("", 0));
}

TEST(QKIDNameIPFormatter, FormatsOnceTheLastCharacterOfANameIsGone) {
    const auto formatter = QKIDNameIPFormatter::init();
    EXPECT_EQ(judge(*formatter, "1 2345", {3, 0}, "1 2.345", {3, 1}), corrected("12 345", 3));
    EXPECT_EQ(judge(*formatter, "1234 5678", {4, 0}, "1234 x5678", {5, 1}), corrected("12 345 678", 4));
}

TEST(QKIDNameIPFormatter, CharactersOfNamesAreThoseThatNoPartnerIDHas) {
    const auto formatter = QKIDNameIPFormatter::init();
    EXPECT_EQ(formatter->validIDOnlyCharacterSet(),
              NSCharacterSet::characterSetWithCharactersInString(" 0123456789").invertedSet());
    EXPECT_EQ(formatter->nonIDCharacterSet(), QKIDFormatter::init()->nonIDCharacterSet());
    formatter->setValidIDOnlyCharacterSet(std::nullopt);
    EXPECT_EQ(judge(*formatter, "10.0", {4, 0}, "10.", {3, 0}), corrected("100", 3))
        << "without them no text is a name";
    formatter->awakeFromNib();
    EXPECT_EQ(judge(*formatter, "10.0", {4, 0}, "10.", {3, 0}), accepted("10.0", 4));
}

TEST(QKMeetingIDFormatter, EmptyFieldStaysEmpty) {
    const auto formatter = QKMeetingIDFormatter::init();
    EXPECT_EQ(judge(*formatter, "", {0, 0}, "m1", {0, 2}), accepted("", 0));
    EXPECT_EQ(shownFor(*formatter, "m"), "m") << "anything else shows the prefix";
    EXPECT_EQ(shownFor(*formatter, "x"), "m");
}

TEST(QKMeetingIDFormatter, HasTheConstantsOfMeetingIDs) {
    const auto formatter = QKMeetingIDFormatter::init();
    EXPECT_EQ(formatter->separator(), "-");
    EXPECT_EQ(formatter->firstSeparatorIndex(), 2U);
    EXPECT_EQ(formatter->secondSeparatorIndex(), 5U);
    EXPECT_EQ(formatter->thirdSeparatorIndex(), QKIDFormatter_NoSeparatorIndex);
    EXPECT_EQ(QKIDFormatter_NoSeparatorIndex, 100000U);
    EXPECT_EQ(formatter->maximumIDLength(), 9U);
    EXPECT_EQ(formatter->baseIDString(), "m");
}

TEST(QKMeetingIDFormatter, GroupsTheDigitsFromTheLeft) {
    const auto formatter = QKMeetingIDFormatter::init();
    const std::vector<const char*> shown = {"m",       "m1",        "m12",        "m12-3",       "m12-34",
                                            "m12-345", "m12-345-6", "m12-345-67", "m12-345-678", "m12-345-678"};
    for (std::size_t count = 0; count < shown.size(); ++count) {
        EXPECT_EQ(formatter->validateID(NSString("1234567890").substringToIndex(count)), text(shown[count]));
    }
}

TEST(QKMeetingIDFormatter, TypedPrefixIsThatOfTheFormatter) {
    const auto formatter = QKMeetingIDFormatter::init();
    EXPECT_EQ(shownFor(*formatter, "m12345678"), "m12-345-678");
    EXPECT_EQ(shownFor(*formatter, "s12-345-678"), "m12-345-678");
    EXPECT_EQ(shownFor(*formatter, "123456789"), "m12-345-678") << "the ninth digit is dropped";
}

TEST(QKMeetingIDFormatter, WithoutCharactersShowsThePrefix) {
    const auto formatter = QKMeetingIDFormatter::init();
    formatter->setNonIDCharacterSet(std::nullopt);
    EXPECT_EQ(formatter->validateID("12345678"), "m");
}

TEST(QKMeetingIDFormatter, PlacesAssumeAPrefixOfOneCharacter) {
    class LongPrefix : public QKMeetingIDFormatter {
    public:
        NSString baseIDString() const override { return "room"; }
        std::uint64_t maximumIDLength() const override { return 12; }
    };
    const auto formatter = QKIDFormatterBase::init<LongPrefix>();
    EXPECT_EQ(formatter->validateID("12"), "room12");
    EXPECT_EQ(formatter->validateID("123"), "roo-m123");
    EXPECT_EQ(formatter->validateID("123456"), "roo-m12-3456");
    EXPECT_EQ(formatter->validateID("12345678"), "roo-m12-345678");
}

TEST(QKInstantSupportIdFormatter, EmptyFieldStaysEmpty) {
    EXPECT_EQ(judge(*QKInstantSupportIdFormatter::init(), "", {0, 0}, "s1", {0, 2}), accepted("", 0));
}

TEST(QKInstantSupportIdFormatter, IsAMeetingIDFormatterWithAnotherPrefix) {
    const auto formatter = QKInstantSupportIdFormatter::init();
    EXPECT_EQ(formatter->baseIDString(), "s");
    EXPECT_EQ(shownFor(*formatter, "s1"), "s1");
    EXPECT_EQ(shownFor(*formatter, "12345678"), "s12-345-678");
    EXPECT_EQ(shownFor(*formatter, "s12-345-678"), "s12-345-678");
    EXPECT_EQ(shownFor(*formatter, "m12345678"), "s12-345-678");
    EXPECT_EQ(formatter->separator(), "-");
    EXPECT_EQ(formatter->maximumIDLength(), 9U);
}

TEST(QKIDFormatterFamily, InheritsAsItSays) {
    EXPECT_EQ(&QKIDFormatter::init()->classDescription(), &QKIDFormatter::describedClass());
    EXPECT_TRUE(QKIDNameIPFormatter::describedClass().isSubclassOf(QKIDFormatter::describedClass()));
    EXPECT_TRUE(QKInstantSupportIdFormatter::describedClass().isSubclassOf(QKMeetingIDFormatter::describedClass()));
    EXPECT_TRUE(QKMeetingIDFormatter::describedClass().isSubclassOf(QKIDFormatterBase::describedClass()));
    EXPECT_TRUE(QKIDFormatterBase::describedClass().isSubclassOf(NSFormatter::describedClass()));
    EXPECT_EQ(QKInstantSupportIdFormatter::init()->valueForKey("baseIDString"), Value("s"));
    EXPECT_EQ(QKIDNameIPFormatter::init()->classDescription().name(), "QKIDNameIPFormatter");
}

} // namespace
} // namespace qk
