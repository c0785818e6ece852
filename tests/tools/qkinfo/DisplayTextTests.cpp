// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/DisplayText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <string>

namespace qk::info {

namespace {

std::size_t columns(std::string_view text) {
    return displayWidth(displayText(text));
}

std::vector<std::string> lines(std::string_view text, std::size_t width) {
    std::vector<std::string> bytes;
    for (const std::wstring& line : wrapped(displayText(text), width)) {
        bytes.push_back(displayBytes(line));
    }
    return bytes;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(DisplayText, EmptyStaysEmpty) {
    EXPECT_EQ(displayLine(""), "");
    EXPECT_EQ(displayLine(" \t\n"), "");
    EXPECT_EQ(columns(""), 0U);
}

TEST(DisplayText, WhatSteersATerminalIsSpelledOut) {
    struct Case {
        std::string_view text;
        std::string_view shown;
    };
    for (const Case& c : std::array{
             Case{"plain \\ text", "plain \\ text"},
             Case{"\x1b[31mred", "\\x1B[31mred"},
             Case{"\x1b]0;title\x07", "\\x1B]0;title\\x07"},
             Case{std::string_view("a\0b", 3), "a\\x00b"},
             Case{"back\bspace\x7f", "back\\x08space\\x7F"},
             Case{"\u009b2J", "\\x9B2J"},
             Case{"\u202egnp.exe", "\\u202Egnp.exe"},
             Case{"\u2066\u2069\u200f\ufeff", "\\u2066\\u2069\\u200F\\uFEFF"},
             Case{"\U000e0041", "\\uE0041"},
             Case{"tab\tand\r\nline", "tab and line"},
             Case{"  many   blanks  ", "many blanks"},
             Case{"line\u2028end", "line\\u2028end"},
         }) {
        EXPECT_EQ(displayLine(c.text), c.shown);
    }
}

TEST(DisplayText, NamesInOtherScriptsStayAsTheyAre) {
    for (const std::string_view text : {"Bürorechner", "財務部のパソコン", "کتاب\u200cها", "👨\u200d👩\u200d👧", "é"}) {
        EXPECT_EQ(displayLine(text), text);
    }
}

TEST(DisplayText, MalformedBytesAndLoneSurrogatesBecomeReplacementCharacters) {
    EXPECT_EQ(displayLine("a\xff"
                          "b"),
              "a\ufffdb");
    const char16_t lone[] = {u'a', 0xD800, u'b', 0xDC00, 0xD83D, 0xDE00, 0xD83D, 0};
    EXPECT_EQ(wellFormedUTF8(NSString(lone)), "a\ufffdb\ufffd\U0001f600\ufffd");
}

TEST(DisplayText, AnEndlessTextIsCut) {
    const std::string shown = displayLine(std::string(1'000'000, 'x'));
    EXPECT_EQ(shown.size(), kLongestDisplayText);
    EXPECT_TRUE(shown.ends_with("x..."));
    EXPECT_EQ(displayLine(std::string(kLongestDisplayText, 'x')), std::string(kLongestDisplayText, 'x'));
}

TEST(DisplayWidth, CountsColumns) {
    struct Case {
        std::string_view text;
        std::size_t columns;
    };
    for (const Case& c : std::array{
             Case{"abc", 3},
             Case{"é", 1},
             Case{"e\u0301", 1},
             Case{"日本", 4},
             Case{"ＡＢ", 4},
             Case{"ｱｲ", 2},
             Case{"한국", 4},
             Case{"\u1112\u1161\u11ab", 2},
             Case{"😀", 2},
             Case{"❤", 1},
             Case{"❤\ufe0f", 2},
             Case{"😀\ufe0f", 2},
             Case{"कि", 2},
             Case{"\U00020000", 2},
         }) {
        EXPECT_EQ(columns(c.text), c.columns) << c.text;
    }
}

TEST(Wrapping, EmptyTextIsOneEmptyLine) {
    EXPECT_EQ(lines("", 10), Lines{""});
}

TEST(Wrapping, BreaksAtBlanks) {
    EXPECT_EQ(lines("one two three", 13), (Lines{"one two three"}));
    EXPECT_EQ(lines("one two three", 12), (Lines{"one two", "three"}));
    EXPECT_EQ(lines("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(lines("one two three", 5), (Lines{"one", "two", "three"}));
}

TEST(Wrapping, BreaksLongWordsWhereTheyReachTheEnd) {
    EXPECT_EQ(lines("abcdefgh", 3), (Lines{"abc", "def", "gh"}));
    EXPECT_EQ(lines("a bcdefgh", 3), (Lines{"a", "bcd", "efg", "h"}));
}

TEST(Wrapping, BreaksLongWordsBehindTheirHyphensUnlessTheLineWouldBeShort) {
    EXPECT_EQ(lines("postgresql-client-common", 23), (Lines{"postgresql-client-", "common"}));
    EXPECT_EQ(lines("a-bcdefghij", 8), (Lines{"a-bcdefg", "hij"}));
    EXPECT_EQ(lines("/usr/lib/systemd/system", 12), (Lines{"/usr/lib/", "systemd/", "system"}));
}

TEST(Wrapping, NeverTakesAMarkFromItsLetter) {
    EXPECT_EQ(lines("e\u0301e\u0301", 1), (Lines{"e\u0301", "e\u0301"}));
}

TEST(Wrapping, AWideCharacterThatDoesNotFitHasALineOfItsOwn) {
    EXPECT_EQ(lines("日本", 3), (Lines{"日", "本"}));
    EXPECT_EQ(lines("日本", 1), (Lines{"日", "本"}));
    EXPECT_EQ(lines("日本", 0), (Lines{"日", "本"}));
}

RC_GTEST_PROP(Wrapping, KeepsEveryWordAndNeverExceedsTheWidth, (const std::string& bytes)) {
    const std::wstring text = displayText(bytes);
    const auto width = *rc::gen::inRange<std::size_t>(2, 40);
    std::wstring joined;
    for (const std::wstring& line : wrapped(text, width)) {
        RC_ASSERT(displayWidth(line) <= width);
        joined += line;
    }
    const auto withoutBlanks = [](std::wstring some) {
        std::erase(some, L' ');
        return some;
    };
    RC_ASSERT(withoutBlanks(joined) == withoutBlanks(text));
}

RC_GTEST_PROP(DisplayText, HoldsNoControlWhateverTheBytes, (const std::string& bytes)) {
    for (const wchar_t character : displayText(bytes)) {
        RC_ASSERT(character >= 0x20);
        RC_ASSERT(character < 0x7F || character > 0x9F);
    }
}

TEST(DisplayText, LinesKeepTheirShape) {
    EXPECT_EQ(displayLines(""), "");
    EXPECT_EQ(displayLines(" a  b\t\n\nc\n"), " a  b\t\n\nc\n");
    EXPECT_EQ(displayLines("a\r\v\x1b[31m\xe2\x80\xae\xff"), "a\\x0D\\x0B\\x1B[31m\\u202E\xef\xbf\xbd");
    EXPECT_EQ(displayLines(std::string(2 * kLongestDisplayText, 'a')), std::string(2 * kLongestDisplayText, 'a'));
}

TEST(DisplayText, ClippingKeepsWholeCharacters) {
    EXPECT_EQ(clipped(L"", 3), L"");
    EXPECT_EQ(clipped(L"abc", 0), L"");
    EXPECT_EQ(clipped(L"abc", 2), L"ab");
    EXPECT_EQ(clipped(L"abc", 9), L"abc");
    EXPECT_EQ(clipped(L"\u65e5\u672c", 3), L"\u65e5");
    EXPECT_EQ(clipped(L"\u65e5", 1), L"");
    EXPECT_EQ(clipped(L"e\u0301x", 1), L"e\u0301");
}

TEST(DisplayText, ExactlyNothingIsLost) {
    EXPECT_EQ(displayExact(""), L"");
    EXPECT_EQ(displayExact(" a  b\t\n"), L" a  b\\x09\\x0A");
    EXPECT_EQ(displayExact("\x1b\xff\xe2\x80\xae"), L"\\x1B\ufffd\\u202E");
    EXPECT_EQ(displayExact(std::string(2 * kLongestDisplayText, 'a')).size(), 2 * kLongestDisplayText);
}

TEST(DisplayText, ElidingTakesTheMiddle) {
    EXPECT_EQ(elided(L"", 0), L"");
    EXPECT_EQ(elided(L"abcdefgh", 8), L"abcdefgh");
    EXPECT_EQ(elided(L"abcdefgh", 7), L"ab...gh");
    EXPECT_EQ(elided(L"abcdefgh", 6), L"a...gh");
    EXPECT_EQ(elided(L"abcdefgh", 4), L"...h");
    EXPECT_EQ(elided(L"abcdefgh", 3), L"abc");
    EXPECT_EQ(elided(L"abcdefgh", 0), L"");
}

TEST(DisplayText, ElidingKeepsWholeCharacters) {
    EXPECT_EQ(elided(L"\u65e5\u672c\u65e5\u672c", 7), L"\u65e5...\u672c");
    EXPECT_EQ(elided(L"\u65e5\u672c\u65e5\u672c", 6), L"...\u672c");
    EXPECT_EQ(elided(L"abcdxe\u0301", 5), L"a...e\u0301");
    for (std::size_t width = 0; width < 12; ++width) {
        EXPECT_LE(displayWidth(elided(L"a\u0301\u65e5bcd\u672cxyz\u65e5e\u0301", width)), width);
    }
}

} // namespace qk::info
