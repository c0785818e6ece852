// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKDecimalNumberFormatter.h"
#include "QKFoundation/formatters/QKStringLengthFormatter.h"
#include "QKFoundation/formatters/QKTFAFormatter.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/formatters/Editing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace qk {
namespace {

bool accepts(const NSFormatter& formatter, const NSString& proposed) {
    const NSRange selection{NSNotFound, 3};
    const Judged judged = judge(formatter, proposed, selection, "before", {1, 2});
    EXPECT_EQ(judged.text, proposed) << "nothing is replaced";
    EXPECT_EQ(judged.selection, selection) << "nothing is moved";
    return judged.isValid;
}

TEST(QKDecimalNumberFormatter, MadeByInitRefusesEveryTextButTheEmptyOne) {
    const auto formatter = QKDecimalNumberFormatter::init();
    EXPECT_EQ(formatter->maxLength(), 0U);
    EXPECT_FALSE(formatter->invalidCharactersSet().has_value());
    EXPECT_TRUE(accepts(*formatter, ""));
    EXPECT_FALSE(accepts(*formatter, "1"));
}

TEST(QKDecimalNumberFormatter, WithoutCharactersOnlyTheLengthCounts) {
    const auto formatter = QKDecimalNumberFormatter::init();
    formatter->setMaxLength(2);
    EXPECT_TRUE(accepts(*formatter, "a-"));
    EXPECT_FALSE(accepts(*formatter, "a-b"));
}

TEST(QKDecimalNumberFormatter, FromAFileTakesAnyNumberOfDigits) {
    const auto formatter = QKDecimalNumberFormatter::initWithCoder(NSCoder());
    EXPECT_EQ(formatter->maxLength(), UINT64_MAX);
    EXPECT_EQ(formatter->invalidCharactersSet(),
              NSCharacterSet::characterSetWithCharactersInString("1234567890").invertedSet());
    EXPECT_TRUE(accepts(*formatter, ""));
    EXPECT_TRUE(accepts(*formatter, "0123456789"));
    EXPECT_TRUE(accepts(*formatter, NSString(std::u16string(10000, u'7'))));
}

TEST(QKDecimalNumberFormatter, RefusesAllButDigits) {
    const auto formatter = QKDecimalNumberFormatter::initWithCoder(NSCoder());
    for (const char* refused :
         {"-1", "1.5", "1,5", " ", "1 2", "+1", "12a", "\uff11", "\u0663", "1\u0301", "\U0001D7D9"}) {
        EXPECT_FALSE(accepts(*formatter, text(refused))) << refused;
    }
}

TEST(QKDecimalNumberFormatter, CountsUTF16Units) {
    const auto formatter = QKDecimalNumberFormatter::init();
    formatter->setMaxLength(1);
    EXPECT_FALSE(accepts(*formatter, "\U0001F600"));
    formatter->setMaxLength(2);
    EXPECT_TRUE(accepts(*formatter, "\U0001F600"));
}

TEST(QKDecimalNumberFormatter, IsTheNumberFormatterForItsValue) {
    const auto formatter = QKDecimalNumberFormatter::initWithCoder(NSCoder());
    EXPECT_EQ(formatter->stringForObjectValue(12), "12");
    std::optional<Value> value;
    std::optional<NSString> error;
    EXPECT_TRUE(formatter->getObjectValue(value, "34", error));
    EXPECT_EQ(value, Value(34));
}

TEST(QKDecimalNumberFormatter, CanBeDerivedByAHost) {
    class Pin : public QKDecimalNumberFormatter {
    protected:
        void setUpWithCoder(const NSCoder& coder) override {
            QKDecimalNumberFormatter::setUpWithCoder(coder);
            const auto length = coder.decodeObjectForKey("length");
            setMaxLength(length.has_value() ? length->as<NSNumber>()->unsignedIntegerValue() : 4);
        }
    };
    EXPECT_EQ(QKDecimalNumberFormatter::initWithCoder<Pin>(NSCoder())->maxLength(), 4U);
    EXPECT_EQ(QKDecimalNumberFormatter::initWithCoder<Pin>(NSCoder(NSDictionary{{"length", 8}}))->maxLength(), 8U);
    EXPECT_EQ(QKDecimalNumberFormatter::init<Pin>()->maxLength(), 0U);
}

TEST(QKDecimalNumberFormatter, LengthIsAPropertyByKey) {
    const auto formatter = QKDecimalNumberFormatter::init();
    formatter->setValueForKey(3, "maxLength");
    EXPECT_EQ(formatter->maxLength(), 3U);
    EXPECT_EQ(formatter->valueForKey("maxLength"), Value(3));
    EXPECT_EQ(formatter->classDescription().superclass(), &NSNumberFormatter::describedClass());
}

TEST(QKTFAFormatter, MadeByInitIsNotSetUp) {
    const auto formatter = QKTFAFormatter::init();
    EXPECT_EQ(formatter->maxLength(), 0U);
    EXPECT_FALSE(accepts(*formatter, "1"));
    EXPECT_TRUE(accepts(*formatter, ""));
}

TEST(QKTFAFormatter, TakesSixDigits) {
    const auto formatter = QKTFAFormatter::initWithCoder(NSCoder());
    EXPECT_EQ(formatter->maxLength(), 6U);
    EXPECT_TRUE(accepts(*formatter, ""));
    EXPECT_TRUE(accepts(*formatter, "123456"));
    EXPECT_FALSE(accepts(*formatter, "1234567"));
    EXPECT_FALSE(accepts(*formatter, "12a"));
    EXPECT_EQ(formatter->classDescription().name(), "QKTFAFormatter");
}

TEST(QKStringLengthFormatter, NothingIsShownAsNothing) {
    const auto formatter = QKStringLengthFormatter::init();
    EXPECT_EQ(formatter->stringForObjectValue(std::nullopt), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(NSNull{}), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(NSArray{"a", "b", "c"}), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(NSDate::dateWithTimeIntervalSince1970(0)), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(std::make_shared<NSObject>()), std::nullopt);
    formatter->setMaxLength(0);
    EXPECT_EQ(formatter->stringForObjectValue(std::nullopt), std::nullopt) << "within every limit";
}

TEST(QKStringLengthFormatter, ShowsTheLabelForWhatIsTooLong) {
    for (const auto& formatter : {QKStringLengthFormatter::init(), QKStringLengthFormatter::initWithCoder(NSCoder())}) {
        EXPECT_EQ(formatter->maxLength(), 2U);
        EXPECT_EQ(formatter->overflowLabel(), "99+");
        EXPECT_EQ(formatter->stringForObjectValue(""), "");
        EXPECT_EQ(formatter->stringForObjectValue("99"), "99");
        EXPECT_EQ(formatter->stringForObjectValue("100"), "99+");
        EXPECT_EQ(formatter->stringForObjectValue(7), "7");
        EXPECT_EQ(formatter->stringForObjectValue(42), "42");
        EXPECT_EQ(formatter->stringForObjectValue(100), "99+");
        EXPECT_EQ(formatter->stringForObjectValue(-10), "99+");
        EXPECT_EQ(formatter->stringForObjectValue(-1), "-1");
        EXPECT_EQ(formatter->stringForObjectValue(true), "1");
        EXPECT_EQ(formatter->stringForObjectValue(99.0), "99");
        EXPECT_EQ(formatter->stringForObjectValue(0.5), "99+");
        EXPECT_EQ(formatter->stringForObjectValue("\U0001F600"), "\U0001F600");
        EXPECT_EQ(formatter->stringForObjectValue("\U0001F600!"), "99+");
    }
}

TEST(QKStringLengthFormatter, AsksObjectsForTheirStringValue) {
    class Count : public NSObject {
    public:
        static const ClassDescription& describedClass() {
            static const ClassDescription& description = ClassBuilder<Count>("Count", NSObject::describedClass())
                                                             .method("stringValue", &Count::stringValue)
                                                             .build();
            return description;
        }
        const ClassDescription& classDescription() const override { return describedClass(); }
        std::optional<NSString> stringValue() const { return shown; }
        std::optional<NSString> shown;
    };
    const auto count = std::make_shared<Count>();
    const auto formatter = QKStringLengthFormatter::init();
    EXPECT_EQ(formatter->stringForObjectValue(count), std::nullopt);
    count->shown = "12";
    EXPECT_EQ(formatter->stringForObjectValue(count), "12");
    count->shown = "123";
    EXPECT_EQ(formatter->stringForObjectValue(count), "99+");
}

TEST(QKStringLengthFormatter, LabelIsNotMeasuredAndMayBeNothing) {
    const auto formatter = QKStringLengthFormatter::init();
    formatter->setOverflowLabel("a long label");
    EXPECT_EQ(formatter->stringForObjectValue("123"), "a long label");
    formatter->setOverflowLabel(std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue("123"), std::nullopt);
    formatter->setMaxLength(UINT64_MAX);
    EXPECT_EQ(formatter->stringForObjectValue("123"), "123");
}

TEST(QKStringLengthFormatter, StoresWhatItShows) {
    const auto formatter = QKStringLengthFormatter::init();
    std::optional<Value> value = "before";
    std::optional<NSString> error;
    EXPECT_TRUE(formatter->getObjectValue(value, "", error));
    EXPECT_EQ(value, Value(""));
    EXPECT_TRUE(formatter->getObjectValue(value, "42", error));
    EXPECT_EQ(value, Value("42"));
    EXPECT_TRUE(formatter->getObjectValue(value, "100", error));
    EXPECT_EQ(value, Value("99+")) << "the label, not the number";
    formatter->setOverflowLabel(std::nullopt);
    EXPECT_TRUE(formatter->getObjectValue(value, "100", error));
    EXPECT_EQ(value, std::nullopt);
    EXPECT_EQ(error, std::nullopt);
}

TEST(QKStringLengthFormatter, AcceptsEveryEdit) {
    EXPECT_TRUE(accepts(*QKStringLengthFormatter::init(), "longer than two"));
}

TEST(QKStringLengthFormatter, CanBeDerivedByAHost) {
    class Short : public QKStringLengthFormatter {
    public:
        void selfSetup() override {
            QKStringLengthFormatter::selfSetup();
            setMaxLength(1);
            setOverflowLabel("9+");
        }
    };
    EXPECT_EQ(QKStringLengthFormatter::init<Short>()->stringForObjectValue(10), "9+");
    EXPECT_EQ(QKStringLengthFormatter::initWithCoder<Short>(NSCoder())->stringForObjectValue(9), "9");
}

TEST(QKStringLengthFormatter, PropertiesAreThereByKey) {
    const auto formatter = QKStringLengthFormatter::init();
    formatter->setValueForKey("many", "overflowLabel");
    formatter->setValueForKey(1, "maxLength");
    EXPECT_EQ(formatter->stringForObjectValue("12"), "many");
    formatter->setValueForKey(std::nullopt, "overflowLabel");
    EXPECT_EQ(formatter->valueForKey("overflowLabel"), std::nullopt);
    formatter->performSelector("selfSetup");
    EXPECT_EQ(formatter->valueForKey("overflowLabel"), Value("99+"));
}

} // namespace
} // namespace qk
