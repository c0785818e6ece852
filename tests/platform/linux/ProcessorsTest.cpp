// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Processors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

namespace qk::platform::parse {
namespace {

using testing::ElementsAre;
using testing::Optional;

TEST(ProcessorInfo, EmptyTextTellsNothing) {
    const ProcessorInfo info = processorInfo("");
    EXPECT_EQ(info.modelName, std::nullopt);
    EXPECT_EQ(info.longMode, std::nullopt);
    EXPECT_EQ(info.processors, 0U);
}

TEST(ProcessorInfo, FirstModelNameCounts) {
    const ProcessorInfo info =
        processorInfo("processor\t: 0\nmodel name\t: A (R) @ 2.0: x\n\nprocessor\t: 1\nmodel name\t: B\n");
    EXPECT_EQ(info.modelName, "A (R) @ 2.0: x");
    EXPECT_EQ(info.processors, 2U);
}

TEST(ProcessorInfo, EmptyModelNameIsNone) {
    EXPECT_EQ(processorInfo("model name\t:\nmodel name\t: \n").modelName, std::nullopt);
}

TEST(ProcessorInfo, LongModeIsAWordOfTheFlags) {
    EXPECT_EQ(processorInfo("flags\t\t: fpu lm nx").longMode, true);
    EXPECT_EQ(processorInfo("flags\t\t: lm").longMode, true);
    EXPECT_EQ(processorInfo("flags\t\t: fpu lmx alm lahf_lm\n").longMode, false);
    EXPECT_EQ(processorInfo("flags\t\t:\n").longMode, false);
    EXPECT_EQ(processorInfo("Features\t: fp asimd lm\n").longMode, std::nullopt);
}

TEST(ProcessorList, EmptyTextIsNoList) {
    EXPECT_EQ(processorList(""), std::nullopt);
    EXPECT_EQ(processorList("\n"), std::nullopt);
}

TEST(ProcessorList, HoldsRangesAndSingleNumbers) {
    EXPECT_THAT(processorList("0"), Optional(ElementsAre(ProcessorRange{0, 0})));
    EXPECT_THAT(processorList("0-1\n"), Optional(ElementsAre(ProcessorRange{0, 1})));
    EXPECT_THAT(processorList("0-1,4,6-7\n"),
                Optional(ElementsAre(ProcessorRange{0, 1}, ProcessorRange{4, 4}, ProcessorRange{6, 7})));
}

TEST(ProcessorList, AnythingElseIsNoList) {
    for (const std::string_view text :
         {"a", "1-", "-1", "1,,2", "1,", ",1", "2-1", "1-2-3", "0x1", "1 2", "1,1", "2,1", "0-3,3", "4294967296",
          "0-4294967295", "99999999999999999999", "1\n\n", "0-10:2/4"}) {
        EXPECT_EQ(processorList(text), std::nullopt) << text;
    }
}

TEST(ProcessorList, CountAddsTheRangesUp) {
    EXPECT_EQ(countOfProcessors({}), 0U);
    EXPECT_EQ(countOfProcessors({{0, 1}, {4, 4}, {6, 7}}), 5U);
}

TEST(NumberBehind, TakesWholeNumbersOnly) {
    EXPECT_EQ(numberBehind("cpu", "cpu0"), 0U);
    EXPECT_EQ(numberBehind("cpu", "cpu12"), 12U);
    for (const std::string_view name : {"", "cpu", "cpufreq", "cpu1a", "cpu01", "cpu-1", "cpu 1", "memory1"}) {
        EXPECT_EQ(numberBehind("cpu", name), std::nullopt) << name;
    }
}

} // namespace
} // namespace qk::platform::parse
