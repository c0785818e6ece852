// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSNumberFormatter.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace qk {
namespace {

class PlainFormatter : public NSFormatter {
public:
    static std::shared_ptr<PlainFormatter> init() { return allocate<PlainFormatter>(); }

protected:
    PlainFormatter() = default;
};

TEST(NSFormatter, ShowsNothingByItself) {
    const auto formatter = PlainFormatter::init();
    EXPECT_THROW((void)formatter->stringForObjectValue(std::nullopt), NSInvalidArgumentException);
    EXPECT_THROW((void)formatter->stringForObjectValue("a"), NSInvalidArgumentException);
    EXPECT_EQ(formatter->attributedStringForObjectValue("a", {}), std::nullopt);
}

TEST(NSFormatter, ReadsNothingByItself) {
    std::optional<Value> value = "before";
    std::optional<NSString> error;
    EXPECT_THROW(PlainFormatter::init()->getObjectValue(value, "a", error), NSInvalidArgumentException);
    EXPECT_EQ(value, Value("before"));
}

TEST(NSFormatter, AcceptsEveryEdit) {
    NSString partial = "anything";
    NSRange selection{3, 2};
    std::optional<NSString> error;
    EXPECT_TRUE(PlainFormatter::init()->isPartialStringValid(partial, selection, "before", {1, 1}, error));
    EXPECT_EQ(partial, "anything");
    EXPECT_EQ(selection, (NSRange{3, 2}));
    EXPECT_EQ(error, std::nullopt);
}

TEST(NSFormatter, KeepsTheClassOfWhatItAllocates) {
    EXPECT_EQ(&NSNumberFormatter::init()->classDescription(), &NSNumberFormatter::describedClass());
    EXPECT_TRUE(NSNumberFormatter::init()->isKindOfClass(NSFormatter::describedClass()));
}

TEST(NSNumberFormatter, ShowsNumbersAlone) {
    const auto formatter = NSNumberFormatter::init();
    EXPECT_EQ(formatter->stringForObjectValue(std::nullopt), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(NSNull{}), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue("12"), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(12), "12");
    EXPECT_EQ(formatter->stringForObjectValue(-0.5), "-0.5");
}

struct Reading {
    const char* text;
    std::optional<Value> value;
};

TEST(NSNumberFormatter, ReadsTheWholeTextAsANumber) {
    const auto formatter = NSNumberFormatter::init();
    const std::vector<Reading> readings = {
        {"", std::nullopt},
        {"  ", std::nullopt},
        {"0", 0},
        {" 12 ", 12},
        {"+7", 7},
        {"-7", -7},
        {"007", 7},
        {"1.", 1.0},
        {".5", 0.5},
        {"-1.25", -1.25},
        {"1e3", 1000.0},
        {"1E-1", 0.1},
        {"9223372036854775807", INT64_MAX},
        {"-9223372036854775808", INT64_MIN},
        {"18446744073709551615", UINT64_MAX},
        {"18446744073709551616", 18446744073709551616.0},
        {"1e999", HUGE_VAL},
    };
    for (const Reading& reading : readings) {
        std::optional<Value> value = "before";
        std::optional<NSString> error;
        EXPECT_TRUE(formatter->getObjectValue(value, text(reading.text), error)) << reading.text;
        EXPECT_EQ(value, reading.value) << reading.text;
        EXPECT_EQ(error, std::nullopt);
    }
}

TEST(NSNumberFormatter, TellsIntegersFromFloatingNumbers) {
    std::optional<Value> value;
    std::optional<NSString> error;
    const auto formatter = NSNumberFormatter::init();
    EXPECT_TRUE(formatter->getObjectValue(value, "3", error));
    EXPECT_FALSE(value->as<NSNumber>()->isFloating());
    EXPECT_TRUE(formatter->getObjectValue(value, "3.0", error));
    EXPECT_TRUE(value->as<NSNumber>()->isFloating());
}

TEST(NSNumberFormatter, RefusesWhatIsNoNumber) {
    const auto formatter = NSNumberFormatter::init();
    for (const char* refused : {"a", "1a", "1 2", "-", "+", ".", "--1", "+-1", "1e", "1e+", "e5", "1.2.3", "0x10",
                                "inf", "nan", "\uff11", "1,5"}) {
        std::optional<Value> value = "before";
        std::optional<NSString> error;
        EXPECT_FALSE(formatter->getObjectValue(value, text(refused), error)) << refused;
        EXPECT_EQ(value, Value("before")) << refused;
    }
}

TEST(NSNumberFormatter, AcceptsEveryEdit) {
    NSString partial = "abc";
    NSRange selection{9, 9};
    std::optional<NSString> error;
    EXPECT_TRUE(NSNumberFormatter::init()->isPartialStringValid(partial, selection, "", {}, error));
    EXPECT_EQ(partial, "abc");
}

TEST(NSCoder, HasTheValuesOfItsFile) {
    EXPECT_EQ(NSCoder().decodeObjectForKey("a"), std::nullopt);
    const NSCoder coder(NSDictionary{{"a", 1}, {"n", NSNull{}}});
    EXPECT_EQ(coder.decodeObjectForKey("b"), std::nullopt);
    EXPECT_EQ(coder.decodeObjectForKey("a"), Value(1));
    EXPECT_EQ(coder.decodeObjectForKey("n"), Value(NSNull{}));
}

TEST(NSAttributedString, IsItsTextAndAttributes) {
    const NSAttributedString bold("a", {{"bold", true}});
    EXPECT_EQ(bold, NSAttributedString("a", {{"bold", true}}));
    EXPECT_FALSE(bold == NSAttributedString("a", {}));
    EXPECT_FALSE(bold == NSAttributedString("b", {{"bold", true}}));
}

} // namespace
} // namespace qk
