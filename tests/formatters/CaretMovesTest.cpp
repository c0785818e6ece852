// SPDX-License-Identifier: Apache-2.0
// Where the caret goes, worked out by hand. A caret stands before the character of its number.
#include "QKFoundation/formatters/QKIDFormatter.h"
#include "QKFoundation/formatters/QKMeetingIDFormatter.h"

#include "tests/formatters/Editing.h"

#include <gtest/gtest.h>

#include <vector>

namespace qk {
namespace {

struct Move {
    const char* what;
    const char* original;
    NSRange selection; // replaced by the edit
    const char* proposed;
    std::uint64_t proposedCaret;
    const char* text;
    std::uint64_t caret;
};

void expectMoves(const NSFormatter& formatter, const std::vector<Move>& moves) {
    for (const Move& move : moves) {
        EXPECT_EQ(judge(formatter, text(move.proposed), {move.proposedCaret, 0}, text(move.original), move.selection),
                  corrected(text(move.text), move.caret))
            << move.what;
    }
}

constexpr std::uint64_t kFar = ~std::uint64_t{0};

TEST(CaretMoves, AtTheEndTheCaretStaysAtTheEnd) {
    expectMoves(*QKIDFormatter::init(),
                {{"the first digit", "", {0, 0}, "1", 1, "1", 1},
                 {"the digit that needs a separator", "123", {3, 0}, "1234", 4, "1 234", 5},
                 {"the digit that takes one away", "1 234", {4, 1}, "1 23", 4, "123", 3},
                 {"the last of ten", "1 234 567 890", {12, 1}, "1 234 567 89", 12, "123 456 789", 11},
                 {"an eleventh digit", "1 234 567 890", {13, 0}, "1 234 567 8901", 14, "1 234 567 890", 13},
                 {"a letter", "1 234", {5, 0}, "1 234x", 6, "1 234", 5},
                 {"a paste of too much", "", {0, 0}, "12345678901234", 14, "1 234 567 890", 13},
                 {"a location beyond the end", "12", {2, 0}, "123", kFar, "123", 3}});
}

TEST(CaretMoves, NewSeparatorPushesTheCaretFromTheSecondPlaceOn) {
    expectMoves(*QKIDFormatter::init(),
                {{"typed at 0", "123", {0, 0}, "9123", 1, "9 123", 1},
                 {"typed at 1", "123", {1, 0}, "1923", 2, "1 923", 3},
                 {"typed at 2", "123", {2, 0}, "1293", 3, "1 293", 4},
                 {"typed into nine digits", "123 456 789", {1, 0}, "1023 456 789", 2, "1 023 456 789", 3},
                 {"two at once", "12", {1, 0}, "13456782", 7, "13 456 782", 9},
                 {"two at once, one of them behind the caret", "123", {0, 0}, "456789123", 6, "456 789 123", 8},
                 {"three at once", "1", {0, 0}, "2345678901", 9, "2 345 678 901", 12}});
}

TEST(CaretMoves, WithoutAChangeOfSeparatorsTheCaretStaysWhereItWasProposed) {
    expectMoves(*QKIDFormatter::init(),
                {{"a letter disappears before the caret", "1 234", {2, 0}, "1 a234", 3, "1 234", 3},
                 {"a separator is deleted", "1 234", {1, 1}, "1234", 1, "1 234", 1},
                 {"a second separator is typed", "1 234", {1, 0}, "1  234", 2, "1 234", 2},
                 {"a digit in the middle", "1 234", {3, 0}, "1 2934", 4, "12 934", 4},
                 {"an eleventh digit in the middle", "1 234 567 890", {3, 0}, "1 2934 567 890", 4, "1 293 456 789", 4},
                 {"letters only, the caret is cut", "12", {0, 0}, "abcd12", 4, "12", 2}});
}

TEST(CaretMoves, LostSeparatorPullsTheCaret) {
    expectMoves(
        *QKIDFormatter::init(),
        {{"the first digit", "1 234", {0, 1}, " 234", 0, "234", 0},
         {"the digit behind the separator", "1 234", {2, 1}, "1 34", 2, "134", 1},
         {"the first of ten", "1 234 567 890", {0, 1}, " 234 567 890", 0, "234 567 890", 0},
         {"in the middle of ten: one separator before, three in all",
          "1 234 567 890",
          {6, 1},
          "1 234 67 890",
          6,
          "123 467 890",
          5},
         {"near the start of ten: none before, three in all",
          "1 234 567 890",
          {2, 1},
          "1 34 567 890",
          2,
          "134 567 890",
          0},
         {"an empty selection counts as one character", "1 234 567 890", {6, 0}, "1 234 67 890", 6, "123 467 890", 5},
         {"more separators lost than characters before the caret", "1 234 567 890", {1, 1}, "12", 1, "12", 0},
         {"as many separators as before: the caret stays", "12 34567", {3, 1}, "12 4567", 5, "124 567", 5},
         {"more separators than before: two further", "1234567", {2, 1}, "12456", 4, "12 456", 6}});
}

TEST(CaretMoves, CaretThatWouldLeaveTheTextToTheLeftIsAtItsEnd) {
    expectMoves(*QKIDFormatter::init(),
                {{"location 1, three separators fewer before it",
                  "1 234 567 890",
                  {1, 1},
                  "1 34 567 890",
                  1,
                  "134 567 890",
                  11},
                 {"location 0 of a replaced selection", "1 234 567 890", {0, 5}, "9 567 890", 0, "9 567 890", 9}});
}

TEST(CaretMoves, ReplacedSelectionMovesByWhatItsRestNeeds) {
    expectMoves(
        *QKIDFormatter::init(),
        {{"deleted whole groups", "1 234 567 890", {2, 7}, "1  890", 2, "1 890", 2},
         {"deleted from the start", "1 234", {0, 2}, "234", 0, "234", 0},
         {"replaced by one digit that needs a separator", "1 234 567 890", {0, 5}, "9 567 890", 1, "9 567 890", 0},
         {"replaced by one digit that needs none", "1 234 567 890", {0, 5}, "9 67 890", 1, "967 890", 1},
         {"the end of a text", "1 234 567 890", {5, 8}, "1 234", 5, "1 234", 5}});
}

TEST(CaretMoves, OnlyTheSumOfPlaceAndLengthMattersForASingleCharacter) {
    const auto formatter = QKIDFormatter::init();
    // Counted up to the end of the original text, wherever the selection is said to be.
    for (const std::uint64_t location : {std::uint64_t{0}, std::uint64_t{6}, NSNotFound}) {
        EXPECT_EQ(judge(*formatter, "1 234 67 890", {6, 0}, "1 234 567 890", {location, 1}),
                  corrected("123 467 890", 5));
    }
    // The sum wraps to 0: no separator of the original text is counted, and one before the caret is one more.
    const std::uint64_t wrapping = ~std::uint64_t{13} + 1;
    EXPECT_EQ(judge(*formatter, "1 234 67 890", {6, 0}, "1 234 567 890", {wrapping, 1}), corrected("123 467 890", 8));
}

TEST(CaretMoves, PrefixIsNotCounted) {
    expectMoves(*QKMeetingIDFormatter::init(),
                {{"the first digit", "", {0, 0}, "1", 1, "m1", 2},
                 {"two digits with the caret between them", "", {0, 0}, "12", 1, "m12", 1},
                 {"the digit that needs a separator", "m12", {3, 0}, "m123", 4, "m12-3", 5},
                 {"the same in the middle", "m12", {1, 0}, "m312", 2, "m31-2", 3},
                 {"the separator is deleted", "m12-3", {3, 1}, "m123", 3, "m12-3", 3},
                 {"the prefix is deleted", "m12-3", {0, 1}, "12-3", 0, "m12-3", 0},
                 {"the first digit of three", "m12-3", {1, 1}, "m2-3", 1, "m23", 0},
                 {"a digit of six", "m12-345-6", {4, 1}, "m12-45-6", 4, "m12-456", 3},
                 {"a ninth digit", "m12-345-678", {11, 0}, "m12-345-6789", 12, "m12-345-678", 11},
                 {"a letter alone", "", {0, 0}, "x", 1, "m", 1}});
}

TEST(CaretMoves, LengthOfTheSelectionIsKept) {
    const auto formatter = QKIDFormatter::init();
    EXPECT_EQ(judge(*formatter, "1234", {4, 7}, "123", {3, 0}), (Judged{false, "1 234", {5, 7}}));
    EXPECT_EQ(judge(*formatter, "1234", {2, 1}, "123", {2, 0}), (Judged{false, "1 234", {3, 1}}));
}

} // namespace
} // namespace qk
