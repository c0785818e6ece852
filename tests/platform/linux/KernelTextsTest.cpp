// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include <gtest/gtest.h>

#include <string_view>

namespace qk::platform::parse {
namespace {

using namespace std::string_view_literals;

TEST(MemoryTotal, IsAbsentWithoutItsLine) {
    EXPECT_EQ(memoryTotal(""), std::nullopt);
    EXPECT_EQ(memoryTotal("MemFree: 1 kB\n"), std::nullopt);
    EXPECT_EQ(memoryTotal("SMemTotal: 1 kB\n"), std::nullopt);
}

TEST(MemoryTotal, IsInBytes) {
    EXPECT_EQ(memoryTotal("MemTotal:       24684096 kB\nMemFree:        1 kB\n"), 25276514304U);
    EXPECT_EQ(memoryTotal("MemFree: 1 kB\nMemTotal: 0 kB"), 0U);
}

TEST(MemoryTotal, AnotherUnitOrNumberIsNone) {
    for (const std::string_view text :
         {"MemTotal: 1 MB", "MemTotal: 1", "MemTotal: -1 kB", "MemTotal: kB", "MemTotal: 1x kB",
          "MemTotal: 18014398509481984 kB", "MemTotal: 99999999999999999999 kB"}) {
        EXPECT_EQ(memoryTotal(text), std::nullopt) << text;
    }
    EXPECT_EQ(memoryTotal("MemTotal: 18014398509481983 kB"), 18446744073709550592U);
}

TEST(BootTime, IsAbsentWithoutItsLine) {
    EXPECT_EQ(bootTime(""), std::nullopt);
    EXPECT_EQ(bootTime("cpu  1 2 3\nctxt 5\n"), std::nullopt);
    EXPECT_EQ(bootTime("btime"), std::nullopt);
}

TEST(BootTime, IsWholeSeconds) {
    EXPECT_EQ(bootTime("cpu  1 2 3\nbtime 1795220992\nprocesses 7\n"), 1795220992);
    EXPECT_EQ(bootTime("btime -5"), -5);
    EXPECT_EQ(bootTime("btime 9223372036854775808\n"), std::nullopt);
    EXPECT_EQ(bootTime("btime 1.5\n"), std::nullopt);
}

TEST(SingleNumber, IsTheWholeContent) {
    EXPECT_EQ(singleNumber("4700000\n"), 4700000U);
    EXPECT_EQ(singleNumber("8000000\n", 16), 0x8000000U);
    EXPECT_EQ(singleNumber("ffffffffffffffff", 16), UINT64_MAX);
    for (const std::string_view text : {"", "\n", "-1\n", "+1\n", " 1\n", "1 \n", "0x8\n", "<unknown>\n"}) {
        EXPECT_EQ(singleNumber(text), std::nullopt) << text;
    }
}

TEST(SingleText, EmptyOneIsNone) {
    for (const std::string_view text : {""sv, "\n"sv, "\0"sv, " \t\n"sv, "\0text"sv}) {
        EXPECT_EQ(singleText(text), std::nullopt);
    }
}

TEST(SingleText, LosesItsEndAndNothingElse) {
    EXPECT_EQ(singleText("Example Book\n"), "Example Book");
    EXPECT_EQ(singleText("Example Book"), "Example Book");
    EXPECT_EQ(singleText("Example Board\0"sv), "Example Board");
    EXPECT_EQ(singleText("Example\0Board\0"sv), "Example");
    EXPECT_EQ(singleText("  To be filled by O.E.M. \n"), "  To be filled by O.E.M. ");
    EXPECT_EQ(singleText("two\nlines\n"), "two\nlines");
}

} // namespace
} // namespace qk::platform::parse
