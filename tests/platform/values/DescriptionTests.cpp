// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Description.h"

#include "tests/platform/values/Printing.h"
#include "tests/platform/values/ProbeObject.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

using namespace std::string_view_literals;

struct Shown {
    Value value;
    NSString alone;
    NSString element; // as the only element of an array
};

class Description : public testing::TestWithParam<Shown> {};

TEST_P(Description, StandsBareAloneAndQuotedAsAnElement) {
    EXPECT_EQ(GetParam().value.description(), GetParam().alone);
    EXPECT_EQ(Value(NSArray{GetParam().value}).description(), NSString("(\n    ") + GetParam().element + "\n)");
    EXPECT_EQ(Value(NSDictionary{{"k", GetParam().value}}).description(),
              NSString("{\n    k = ") + GetParam().element + ";\n}");
}

INSTANTIATE_TEST_SUITE_P(
    Values, Description,
    testing::Values(Shown{NSNull(), "<null>", "\"<null>\""}, Shown{"", "", "\"\""},
                    Shown{"abcXYZ019", "abcXYZ019", "abcXYZ019"}, Shown{"a b", "a b", "\"a b\""},
                    Shown{"a_b", "a_b", "\"a_b\""}, Shown{"a-b", "a-b", "\"a-b\""}, Shown{"a.b", "a.b", "\"a.b\""},
                    Shown{"a:b", "a:b", "\"a:b\""}, Shown{"/a", "/a", "\"/a\""}, Shown{"<a>", "<a>", "\"<a>\""},
                    Shown{"say \"x\"", "say \"x\"", "\"say \\\"x\\\"\""}, Shown{"a\\b", "a\\b", "\"a\\\\b\""},
                    Shown{"a\nb\tc", "a\nb\tc", "\"a\\nb\\tc\""},
                    Shown{"\r\a\b\f\v", "\r\a\b\f\v", "\"\\r\\a\\b\\f\\v\""},
                    Shown{"\0\x1B\x7F", "\0\x1B\x7F", "\"\\000\\033\\177\""},
                    Shown{"h\u00E9", "h\u00E9", "\"h\\U00e9\""}, Shown{"\u4E2D", "\u4E2D", "\"\\U4e2d\""},
                    Shown{"\U0001F600", "\U0001F600", "\"\\Ud83d\\Ude00\""}, Shown{"\u0080", "\u0080", "\"\\U0080\""}));

INSTANTIATE_TEST_SUITE_P(
    Others, Description,
    testing::Values(Shown{true, "1", "1"}, Shown{false, "0", "0"}, Shown{42, "42", "42"}, Shown{-1, "-1", "\"-1\""},
                    Shown{0.1, "0.1", "\"0.1\""}, Shown{1.0, "1", "1"}, Shown{NSData(), "<>", "<>"},
                    Shown{NSData("\x0a\x0b\x0c\x0d\x0e"sv), "<0a0b0c0d 0e>", "<0a0b0c0d 0e>"},
                    Shown{NSData("\xff\x00\x01\x02"sv), "<ff000102>", "<ff000102>"},
                    Shown{NSDate::dateWithTimeIntervalSince1970(1479269100.5), "2016-11-16 04:05:00 +0000",
                          "\"2016-11-16 04:05:00 +0000\""},
                    Shown{*NSURL::URLWithString("http://h/a%20b"), "http://h/a%20b", "\"http://h/a%20b\""},
                    Shown{std::make_shared<ProbeObject>(1U, "<Probe: 0x7f00>\nsecond line"),
                          "<Probe: 0x7f00>\nsecond line", "\"<Probe: 0x7f00>\\nsecond line\""}));

struct Collection {
    Value value;
    NSString text;
};

class CollectionDescription : public testing::TestWithParam<Collection> {};

TEST_P(CollectionDescription, HasALinePerElement) {
    EXPECT_EQ(GetParam().value.description(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Collections, CollectionDescription,
    testing::Values(
        Collection{NSArray(), "(\n)"}, Collection{NSDictionary(), "{\n}"},
        Collection{NSArray{"a", "b c"}, "(\n    a,\n    \"b c\"\n)"},
        Collection{NSDictionary{{"key", "value"}, {"key2", "a b"}}, "{\n    key = value;\n    key2 = \"a b\";\n}"},
        Collection{NSDictionary{{"b", 1}, {"B", 2}, {"a key", 3}}, "{\n    B = 2;\n    \"a key\" = 3;\n    b = 1;\n}"},
        Collection{NSDictionary{{"1", NSDictionary{{"1", NSDictionary{{"1", 1}}}}}},
                   "{\n    1 =     {\n        1 =         {\n            1 = 1;\n        };\n    };\n}"},
        Collection{NSDictionary{{"key", NSArray{"a"}}}, "{\n    key =     (\n        a\n    );\n}"},
        Collection{NSDictionary{{"key", NSDictionary()}}, "{\n    key =     {\n    };\n}"},
        Collection{NSDictionary{{"key", NSArray()}}, "{\n    key =     (\n    );\n}"},
        Collection{NSArray{NSDictionary{{"a", 1}}}, "(\n        {\n        a = 1;\n    }\n)"},
        Collection{NSArray{NSArray{"a"}, NSArray{}, "b"},
                   "(\n        (\n        a\n    ),\n        (\n    ),\n    b\n)"},
        Collection{
            NSArray{NSDictionary{{"x", NSArray{1, 2}}}, "y"},
            "(\n        {\n        x =         (\n            1,\n            2\n        );\n    },\n    y\n)"}));

TEST(Description, IndentationStopsGrowingInTheDepth) {
    Value value = "core";
    for (std::size_t level = 0; level < internal::kDeepestIndentation + 10; ++level) {
        value = NSArray{value};
    }
    const NSString text = value.description();
    const NSString deepest{std::u16string(4 * internal::kDeepestIndentation, u' ')};
    EXPECT_TRUE(text.contains((deepest + "core\n").units()));
    EXPECT_FALSE(text.contains((deepest + " core\n").units()));
}

} // namespace
} // namespace qk
