// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/ProcessStat.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::platform::parse {
namespace {

TEST(ProcessStat, DamagedLinesAreRefused) {
    for (const std::string_view text :
         {"", "1", "1 (a", "1 a) R", "1 )a( R 0 0 0 0 0 0", "1 (a)", "1 (a) ", "1 (a)R 1 1 1 1 1 0 1", "1 (a) R",
          "1 (a) R 1 1 1 1 1", "1 (a) R 1 1 1 1 1 x 1", "1 (a) Q 1 1 1 1 1 0 1"}) {
        EXPECT_FALSE(processStat(text).has_value()) << text;
    }
}

TEST(ProcessStat, LettersBecomeTheTablesStates) {
    const struct {
        char letter;
        std::optional<char> state;
    } rows[] = {{'R', SRUN},  {'S', SSLEEP}, {'D', SSLEEP},       {'I', SSLEEP},       {'T', SSTOP},
                {'t', SSTOP}, {'Z', SZOMB},  {'X', std::nullopt}, {'x', std::nullopt}, {'r', std::nullopt}};
    for (const auto& row : rows) {
        const std::string text = std::string("7 (name) ") + row.letter + " 1 1 1 0 -1 4194304 0 0\n";
        const auto stat = processStat(text);
        EXPECT_EQ(stat.has_value() ? std::optional(stat->state) : std::nullopt, row.state) << row.letter;
    }
}

TEST(ProcessStat, NamesMayHoldParenthesesBlanksAndLineFeeds) {
    const auto stat = processStat("12240 (a) R (b\nc) S 1 1 1 0 -1 4194304 0\n");
    ASSERT_TRUE(stat.has_value());
    EXPECT_EQ(stat->command, "a) R (b\nc");
    EXPECT_EQ(stat->state, SSLEEP);
}

TEST(ProcessStat, NamesMayBeEmptyOrEndInAParenthesis) {
    EXPECT_EQ(processStat("1 () R 1 1 1 0 -1 0 0\n")->command, "");
    EXPECT_EQ(processStat("1 (x)) R 1 1 1 0 -1 0 0\n")->command, "x)");
}

TEST(ProcessStat, ThreadsOfTheKernelAreMarked) {
    EXPECT_TRUE(processStat("2 (kthreadd) S 0 0 0 0 -1 2129984 0\n")->isKernelThread);
    EXPECT_FALSE(processStat("1 (init) S 0 1 1 0 -1 4194560 0\n")->isKernelThread);
}

TEST(TaskCount, StandsBehindTheSlash) {
    EXPECT_EQ(taskCount(""), std::nullopt);
    EXPECT_EQ(taskCount("0.20 0.18 0.12 1"), std::nullopt);
    EXPECT_EQ(taskCount("0.20 0.18 0.12 1/x 11206"), std::nullopt);
    EXPECT_EQ(taskCount("0.20 0.18 0.12 1/80 11206\n"), 80U);
}

} // namespace
} // namespace qk::platform::parse
