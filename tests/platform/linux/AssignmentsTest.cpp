// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Assignments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>
#include <utility>

namespace qk::platform::parse {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(Assignments, EmptyTextHasNone) {
    EXPECT_THAT(assignments(""), IsEmpty());
}

struct Line {
    const char* description;
    std::string_view text;
    const char* value; // null: no assignment
};

class AssignmentOf : public testing::TestWithParam<Line> {};

TEST_P(AssignmentOf, IsReadAsAShellReadsIt) {
    if (GetParam().value == nullptr) {
        EXPECT_THAT(assignments(GetParam().text), IsEmpty());
    } else {
        EXPECT_THAT(assignments(GetParam().text), ElementsAre(Pair("NAME", GetParam().value)));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, AssignmentOf,
    testing::Values(Line{"Bare", "NAME=debian\n", "debian"}, Line{"WithoutLastNewline", "NAME=debian", "debian"},
                    Line{"Empty", "NAME=\n", ""}, Line{"EmptyQuotes", "NAME=\"\"\n", ""},
                    Line{"DoubleQuotes", "NAME=\"Debian GNU/Linux\"\n", "Debian GNU/Linux"},
                    Line{"SingleQuotes", "NAME='Debian GNU/Linux'\n", "Debian GNU/Linux"},
                    Line{"EscapesInDoubleQuotes", R"(NAME="a \"b\" \\ \$c \`d")", R"(a "b" \ $c `d)"},
                    Line{"OtherBackslashesInDoubleQuotesStay", R"(NAME="a\nb")", R"(a\nb)"},
                    Line{"BackslashesInSingleQuotesStay", R"(NAME='a\"b')", R"(a\"b)"},
                    Line{"EscapeOutsideOfQuotes", R"(NAME=a\ b)", "a b"}, Line{"LastBackslashStays", "NAME=a\\", "a\\"},
                    Line{"JoinedPieces", R"(NAME=a"b"'c')", "abc"}, Line{"CarriageReturn", "NAME=\"a\"\r\n", "a"},
                    Line{"Indented", "  NAME=a  \n", "a"}, Line{"EqualsInValue", "NAME=a=b\n", "a=b"},
                    Line{"HashInValue", "NAME=a#b\n", "a#b"}, Line{"LaterOneCounts", "NAME=a\nNAME=b\n", "b"},
                    Line{"BrokenLaterOneDoesNotCount", "NAME=a\nNAME=\"b\n", "a"},
                    Line{"Comment", "#NAME=a\n", nullptr}, Line{"NoEquals", "NAME\n", nullptr},
                    Line{"NoName", "=a\n", nullptr}, Line{"DigitFirst", "1A=a\n", nullptr},
                    Line{"BlankInName", "NA ME=a\n", nullptr}, Line{"UnclosedDoubleQuote", "NAME=\"a\n", nullptr},
                    Line{"UnclosedSingleQuote", "NAME='a\n", nullptr},
                    Line{"EscapedClosingQuote", "NAME=\"a\\\"\n", nullptr},
                    Line{"BytesThatAreNotUTF8", "NAME=\xFF\xFE\n", "\xFF\xFE"}),
    [](const auto& tested) { return tested.param.description; });

TEST(VersionTriple, FollowsTheNumbersOfVERSION_ID) {
    constexpr std::int64_t kMost = INT64_MAX;
    const std::pair<std::string_view, NSOperatingSystemVersion> cases[] = {
        {"", {0, 0, 0}},
        {"12", {12, 0, 0}},
        {"22.04", {22, 4, 0}},
        {"9.3", {9, 3, 0}},
        {"3.19.1", {3, 19, 1}},
        {"39.20231101.3.0", {39, 20231101, 3}},
        {"15-SP5", {15, 0, 0}},
        {"12.", {12, 0, 0}},
        {"12..4", {12, 0, 0}},
        {".4", {0, 0, 0}},
        {"rolling", {0, 0, 0}},
        {"-1", {0, 0, 0}},
        {" 12", {0, 0, 0}},
        {"9223372036854775807.1", {kMost, 1, 0}},
        {"9223372036854775808.1", {0, 0, 0}},
        {"10.99999999999999999999.7", {10, 0, 0}},
    };
    for (const auto& [text, version] : cases) {
        EXPECT_EQ(versionTriple(text), version) << text;
    }
}

} // namespace
} // namespace qk::platform::parse
