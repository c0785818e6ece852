// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Normalization.h"

#include "QKFoundation/platform/values/unicode/NormalizationData.h"
#include "QKFoundation/platform/values/unicode/PlainUnits.h"

#include "tests/platform/values/unicode/Support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <set>
#include <sstream>

namespace qk::unicode::testing {
namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;

std::u16string nfc(std::u16string_view text) {
    std::u16string out;
    appendNFC(text, out);
    return out;
}

std::u32string parse(std::string_view field) {
    std::u32string text;
    std::istringstream in{std::string{field}};
    for (std::uint32_t value = 0; in >> std::hex >> value;) {
        text += static_cast<char32_t>(value);
    }
    return text;
}

/// One line: the source, its forms C and D, and those of its compatibility decomposition.
struct Line {
    std::string text;
    bool isSingle = false;
    std::array<std::u32string, 5> forms;
};

std::vector<Line> readLines() {
    std::ifstream file{QK_UNICODE_TEST_DATA "/NormalizationTest.txt"};
    std::vector<Line> lines;
    bool isSingle = false;
    for (std::string text; std::getline(file, text);) {
        if (text.empty() || text[0] == '#') {
            continue;
        }
        if (text[0] == '@') {
            isSingle = text == "@Part1";
            continue;
        }
        Line line{text, isSingle, {}};
        std::vector<std::string> fields;
        std::istringstream in{text + ';'};
        for (std::string field; std::getline(in, field, ';');) {
            fields.push_back(field);
        }
        if (fields.size() == 3) {
            fields.push_back(fields[1]);
            fields.push_back(fields[2]);
        }
        EXPECT_EQ(fields.size(), 5U) << text;
        for (std::size_t i = 0; i < 5; ++i) {
            line.forms[i] = parse(fields[i].empty() ? fields[0] : fields[i]);
        }
        lines.push_back(line);
    }
    return lines;
}

/// Composition by the letter, with no regard to time.
std::u32string plainNFC(const std::u32string& text) {
    std::u32string all;
    for (const char32_t character : text) {
        const auto parts = decompositionOf(recordOf(character));
        if (hangul::isSyllable(character)) {
            const char32_t index = character - hangul::kSyllable;
            all += {hangul::kLead + index / 588, hangul::kVowel + index % 588 / 28};
            all += index % 28 != 0 ? std::u32string{hangul::kTail + index % 28} : std::u32string{};
        } else if (parts.empty()) {
            all += character;
        }
        for (const std::uint32_t part : parts) {
            all += static_cast<char32_t>(part & 0xFFFFFF);
        }
    }
    const auto classOf = [](char32_t character) { return recordOf(character).combiningClass; };
    for (std::size_t i = 1; i < all.size(); ++i) {
        for (std::size_t j = i; j > 0 && classOf(all[j]) != 0 && classOf(all[j - 1]) > classOf(all[j]); --j) {
            std::swap(all[j], all[j - 1]);
        }
    }
    for (std::size_t i = 1; i < all.size();) {
        std::size_t starter = i;
        bool isBlocked = false;
        while (starter-- > 0 && classOf(all[starter]) != 0) {
            isBlocked = isBlocked || classOf(all[starter]) >= classOf(all[i]);
        }
        isBlocked = isBlocked || starter > i || (starter + 1 < i && classOf(all[i]) == 0);
        const auto composed = isBlocked ? std::nullopt : compose(all[starter], all[i]);
        if (composed) {
            all[starter] = *composed;
            all.erase(i, 1);
        } else {
            ++i;
        }
    }
    return all;
}

TEST(Normalization, EmptyTextIsComposed) {
    EXPECT_TRUE(isNFC({}));
    EXPECT_EQ(nfc({}), u"");
}

TEST(Normalization, PassesTheTestOfUnicode) {
    const std::vector<Line> lines = readLines();
    ASSERT_GT(lines.size(), 18000U);
    for (const Line& line : lines) {
        for (std::size_t i = 0; i < 5; ++i) {
            const std::u16string want = toUTF16(line.forms[i < 3 ? 1 : 3]);
            const std::u16string source = toUTF16(line.forms[i]);
            ASSERT_EQ(nfc(source), want) << line.text << " form " << i;
            ASSERT_EQ(isNFC(source), source == want) << line.text << " form " << i;
            ASSERT_EQ(nfc(u"a\u4E2D" + source + u"z"), u"a\u4E2D" + want + u"z") << line.text << " form " << i;
        }
    }
}

TEST(Normalization, CharactersThatTheTestLeavesOutStay) {
    std::set<char32_t> listed;
    for (const Line& line : readLines()) {
        if (line.isSingle) {
            listed.insert(line.forms[0][0]);
        }
    }
    for (char32_t character = 0; character <= kLastCharacter; ++character) {
        if (!listed.contains(character)) {
            const std::u16string text = toUTF16({&character, 1});
            ASSERT_TRUE(isNFC(text)) << std::hex << static_cast<std::uint32_t>(character);
            ASSERT_EQ(nfc(text), text) << std::hex << static_cast<std::uint32_t>(character);
        }
    }
}

TEST(Normalization, HangulIsComposedAndDecomposedByArithmetic) {
    for (char32_t index = 0; index < 11172; ++index) {
        const std::u16string whole{static_cast<char16_t>(0xAC00 + index)};
        std::u16string parts{static_cast<char16_t>(0x1100 + index / 588),
                             static_cast<char16_t>(0x1161 + index % 588 / 28)};
        if (index % 28 != 0) {
            parts += static_cast<char16_t>(0x11A7 + index % 28);
        }
        ASSERT_EQ(nfc(parts), whole);
        ASSERT_TRUE(isNFC(whole));
    }
}

TEST(Normalization, LoneSurrogatesStayAndSeparate) {
    const std::u16string high(1, char16_t{0xD83D});
    const std::u16string low(1, char16_t{0xDE00});
    const std::vector<std::u16string> texts{high, low, low + high, u"e" + high + u"\u0301", u"e" + low + u"\u0301"};
    for (const std::u16string& text : texts) {
        EXPECT_TRUE(isNFC(text));
        EXPECT_EQ(nfc(text + u"e\u0301"), text + u"\u00E9");
    }
}

TEST(Normalization, PlainUnitsNeedNoTable) {
    for (char32_t character = 0; character <= kLastCharacter; ++character) {
        const std::u16string text = toUTF16({&character, 1});
        if (std::all_of(text.begin(), text.end(), isPlain)) {
            ASSERT_TRUE(recordOf(character).isBoundary()) << std::hex << static_cast<std::uint32_t>(character);
        }
    }
}

TEST(Normalization, AnyMixtureIsComposedAsByTheLetter) {
    SCOPED_TRACE("QK_SEED=" + std::to_string(seed()));
    std::mt19937_64 random{seed()};
    std::vector<char32_t> lively;
    for (char32_t character = 0; character < 0x30000; ++character) {
        const Record& record = recordOf(character);
        if (!record.isBoundary() || record.decompositionLength != 0) {
            lively.push_back(character);
        }
    }
    const std::u32string plain =
        U"aeEoOuUcCsS \u00E9\u1100\u1161\u11A8\uAC00\uAC01\u0323\u0301\u0302\u0316\u4E2D\U0001F600";
    const auto pick = [&random](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    for (int round = 0; round < 20000; ++round) {
        std::u32string text(pick(40), U'\0');
        for (char32_t& character : text) {
            character = pick(3) == 0 ? lively[pick(lively.size())] : plain[pick(plain.size())];
        }
        const std::u16string source = toUTF16(text);
        const std::u16string want = toUTF16(plainNFC(text));
        ASSERT_EQ(nfc(source), want);
        ASSERT_EQ(isNFC(source), source == want);
        ASSERT_TRUE(isNFC(want));
    }
}

TEST(Normalization, MarksInALongTextAreComposedWhereverTheyStand) {
    SCOPED_TRACE("QK_SEED=" + std::to_string(seed()));
    std::mt19937_64 random{seed()};
    const std::u16string letters = u"aeoxz \u00E9\u0142\u01F5\u4E2D";
    const std::u16string marks = u"\u0301\u0308\u0323\u0341\u0344";
    for (int round = 0; round < 300; ++round) {
        std::u16string text;
        std::u16string want;
        const std::size_t marksAmongSixteen = random() % 16;
        for (std::size_t length = random() % 1500; text.size() < length;) {
            std::u16string segment(1, letters[random() % letters.size()]);
            while (random() % 16 < marksAmongSixteen && segment.size() < 4) {
                segment += marks[random() % marks.size()];
            }
            text += segment;
            want += nfc(segment);
        }
        ASSERT_EQ(nfc(text), want);
    }
}

TEST(Normalization, LongRunsOfMixedMarksAreSortedStably) {
    std::u16string source(1, u'x');
    std::u16string sorted(1, u'x');
    // Classes 220, 230 and 1, of characters that do not compose with x.
    const std::u16string marks = u"\u0316\u0305\u0334\u0317\u0306\u0335";
    constexpr int kRounds = 500;
    for (int i = 0; i < kRounds; ++i) {
        source += marks;
    }
    for (const std::u16string& group :
         {std::u16string{u"\u0334\u0335"}, std::u16string{u"\u0316\u0317"}, std::u16string{u"\u0305\u0306"}}) {
        for (int i = 0; i < kRounds; ++i) {
            sorted += group;
        }
    }
    EXPECT_EQ(nfc(source), sorted);
    EXPECT_FALSE(isNFC(source));
    EXPECT_TRUE(isNFC(sorted));
}

TEST(Normalization, AppendsBehindWhatIsThere) {
    std::u16string out = u"e";
    appendNFC(u"\u0301", out);
    EXPECT_EQ(out, u"e\u0301");
}

} // namespace
} // namespace qk::unicode::testing
