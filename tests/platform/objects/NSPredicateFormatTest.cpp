// SPDX-License-Identifier: Apache-2.0
// Texts that are predicates, texts that are none, and the texts of predicates.
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSPredicate.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace qk {
namespace {

std::shared_ptr<const NSPredicate> predicate(std::string_view format) {
    return NSPredicate::predicateWithFormat(text(format));
}

TEST(NSPredicateFormat, OfATextThatIsNoPredicateIsRaised) {
    for (const char* format : {
             "",
             " ",
             "a",
             "a =",
             "= a",
             "a = 1 b",
             "a = 1 AND",
             "AND a = 1",
             "a = 1 OR OR b = 2",
             "NOT",
             "()",
             "(a = 1",
             "a = 1)",
             "a = 'x",
             "a = \"x'",
             "a = 'x\\",
             "a = 12ab",
             "a = 1.2.3",
             "a = 1.",
             "a = 0x10",
             "a = -",
             "a = - 1",
             "a = 1 + 1",
             "a = $b",
             "a ~ b",
             "a = #",
             "a = # b",
             "a = {1, 2",
             "a = {1,}",
             "a = {,}",
             "a = }",
             "a BETWEEN {1}",
             "a BETWEEN {1, 2, 3}",
             "a BETWEEN 1",
             "a MATCHES 'x'",
             "a CONTAINS[d] 'x'",
             "a CONTAINS[cd] 'x'",
             "a CONTAINS[] 'x'",
             "a CONTAINS[c 'x'",
             "a = %",
             "a = %s",
             "a = %%",
             "a = CAST(1)",
             "a = CAST('x', 'NSData')",
             "a = CAST(b, 'NSDate')",
             "a = CAST(1, 'NSDate'",
             "a = function(1)",
             "ANY = 1",
             "in = 1",
             "a.b. = 1",
             ".a = 1",
             "a..b = 1",
             "TRUEPREDICATE = 1",
             "YES",
         }) {
        EXPECT_THROW((void)predicate(format), NSInvalidArgumentException) << format;
    }
}

TEST(NSPredicateFormat, IsWrittenInOneWay) {
    const std::pair<const char*, const char*> cases[] = {
        {"linkActive = YES and builtin = true", "linkActive == YES AND builtin == YES"},
        {"a<>1||b=<2&&!c=>3", R"(a != 1 OR (b <= 2 AND (NOT c >= 3)))"},
        {"NOT (a = 1 OR b = 2)", "NOT (a == 1 OR b == 2)"},
        {"a = 1 AND b = 2 AND c = 3", "a == 1 AND b == 2 AND c == 3"},
        {"kMDItemContentTypeTree == 'public.item'", R"(kMDItemContentTypeTree == "public.item")"},
        {R"(a contains[c] 'x"\'\\')", R"(a CONTAINS[c] "x\"'\\")"},
        {"a = nil OR a = NO", "a == NULL OR a == NO"},
        {"some a.b IN {1, 2.50, -3e20, x}", "ANY a.b IN {1, 2.5, -3e+20, x}"},
        {"self = SELF.a", "SELF == a"},
        {"#and = #'b c'", R"(#and == #"b c")"},
        {"truepredicate or not falsepredicate", "TRUEPREDICATE OR (NOT FALSEPREDICATE)"},
        {"a = 18446744073709551615", "a == 18446744073709551615"},
        {"a = 2.0 OR a = -0.0", "a == 2.0 OR a == -0.0"},
        {"a = 123456789012345678.0", "a == 123456789012345680.0"},
        {"a = CAST(1e999, 'NSDate')", R"(a == CAST("inf", "NSDate"))"},
        {"a = CAST(5.5, 'NSDate')", R"(a == CAST(5.5, "NSDate"))"},
        {"a = CAST('-inf', 'NSNumber')", R"(a == CAST("-inf", "NSNumber"))"},
    };
    for (const auto& [format, written] : cases) {
        EXPECT_EQ(predicate(format)->predicateFormat(), text(written)) << format;
        EXPECT_EQ(predicate(written)->predicateFormat(), text(written)) << format;
        EXPECT_EQ(predicate(format)->description(), text(written)) << format;
    }
}

TEST(NSPredicateFormat, KeyPathsStandInTheOrderOfTheTextOnce) {
    EXPECT_TRUE(predicate("1 = 1")->keyPaths().empty());
    EXPECT_EQ(predicate("b = 1 AND (a.x IN {c, b} OR NOT b = a.x) AND SELF = d")->keyPaths(),
              (std::vector<NSString>{"b", "a.x", "c", "SELF", "d"}));
}

TEST(NSPredicateFormat, ArgumentThatNoTextCanWriteIsShown) {
    EXPECT_EQ(NSPredicate::predicateWithFormat("a = %@", {NSData()})->predicateFormat(), "a == <>");
    Value nested = 1;
    for (int depth = 0; depth < 300; ++depth) {
        nested = NSArray{nested};
    }
    EXPECT_NO_THROW((void)NSPredicate::predicateWithFormat("a = %@", {nested})->predicateFormat());
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

TEST(NSPredicateFormat, ParenthesesNestAsDeepAsTheyLike) {
    constexpr std::size_t kMany = 100'000;
    EXPECT_EQ(predicate(repeated("(", kMany) + "a = 1" + repeated(")", kMany))->predicateFormat(), "a == 1");
    EXPECT_THROW((void)predicate(repeated("(", kMany)), NSInvalidArgumentException);
    EXPECT_THROW((void)predicate(repeated("(", kMany) + "a = 1"), NSInvalidArgumentException);
}

TEST(NSPredicateFormat, PartsNestedTooDeepAreRaised) {
    constexpr std::size_t kMany = 100'000;
    EXPECT_NO_THROW((void)predicate(repeated("NOT ", 200) + "a = 1"));
    EXPECT_THROW((void)predicate(repeated("NOT ", 201) + "a = 1"), NSInvalidArgumentException);
    EXPECT_THROW((void)predicate(repeated("!(", kMany) + "a = 1" + repeated(")", kMany)), NSInvalidArgumentException);
    EXPECT_THROW((void)predicate(repeated("a = 1 AND (b = 1 OR (", kMany) + "c = 1" + repeated("))", kMany)),
                 NSInvalidArgumentException);
    EXPECT_NO_THROW((void)predicate("a IN " + repeated("{", 200) + "1" + repeated("}", 200)));
    EXPECT_THROW((void)predicate("a IN " + repeated("{", kMany) + "1" + repeated("}", kMany)),
                 NSInvalidArgumentException);
}

TEST(NSPredicateFormat, ManyPartsAreReadAndEvaluated) {
    const auto many = predicate(repeated("a = 1 AND ", 20'000) + "b = 2");
    EXPECT_TRUE(many->evaluateWithLookup([](const NSString& key) { return Value(key == "a" ? 1 : 2); }));
    EXPECT_EQ(many->keyPaths().size(), 2U);
}

} // namespace
} // namespace qk
