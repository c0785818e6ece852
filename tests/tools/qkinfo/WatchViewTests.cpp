// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/ScopedTimeZone.h"
#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/watch/StyledLine.h"
#include "tools/qkinfo/watch/WatchView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace qk::info {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

WatchSample sampleWith(double load, std::uint64_t usedMemory) {
    WatchSample sample;
    sample.time = {1'714'551'753};
    sample.processors = ProcessorLoad{{1000}, {10, load - 10, load, 100 - load}};
    QKHardwareRAMUsageData memory;
    memory.usedMemory = usedMemory;
    memory.appMemory = usedMemory - kGiB / 2;
    memory.wiredMemory = kGiB / 4;
    memory.compressedMemory = kGiB / 4;
    memory.chachedFiles = 3 * kGiB;
    memory.freeMemory = kGiB;
    sample.memory = MemoryUse{{8 * kGiB}, memory};
    sample.volumes = {{true, false, false, false, "System", 100 * kGiB, 60 * kGiB, 0},
                      {true, false, false, false, "Data", 1000 * kGiB, 50 * kGiB, 0}};
    sample.processes = QKHardwareProcessUsageData{213, {"editor", "job"}};
    return sample;
}

/// Three samples, with loads of 25, 50 and 75 percent.
WatchHistory threeSamples() {
    WatchHistory history;
    history.add(sampleWith(25, 2 * kGiB));
    history.add(sampleWith(50, 3 * kGiB));
    history.add(sampleWith(75, 4 * kGiB));
    return history;
}

WatchHistory historyOf(const WatchSample& sample) {
    WatchHistory history;
    history.add(sample);
    return history;
}

std::string frame(const WatchHistory& history, const WatchStyle& style) {
    std::string text;
    for (const std::string& line : watchFrame(history, style)) {
        text += line + "\n";
    }
    return text;
}

WatchStyle sized(std::size_t width, std::size_t height, bool color = false) {
    WatchStyle style;
    style.width = width;
    style.height = height;
    style.color = color;
    style.blocks = false;
    return style;
}

std::string withoutColor(const std::string& text) {
    std::string plain;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\x1b') {
            index = text.find('m', index);
        } else {
            plain += text[index];
        }
    }
    return plain;
}

class WatchView : public testing::Test {
private:
    const ScopedTimeZone zone_{"UTC0"};
};

} // namespace

TEST_F(WatchView, WhatTheMachineRefusesIsNotReported) {
    EXPECT_EQ(frame(historyOf({}), sized(80, 24)), "1970-01-01 00:00:00 UTC  every 1 s  q quits\n"
                                                   "\n"
                                                   "CPU           not reported\n"
                                                   "\n"
                                                   "Memory        not reported\n"
                                                   "\n"
                                                   "Processes     not reported\n");
}

TEST_F(WatchView, OnAnOrdinaryTerminalAllOfItIsShown) {
    EXPECT_EQ(frame(threeSamples(), sized(80, 24)),
              "2024-05-01 08:22:33 UTC  every 1 s  q quits\n"
              "\n"
              "CPU           ######################-------  75.0%  user 65.0%, system 10.0%\n"
              "              :=*\n"
              "\n"
              "Memory        ###############--------------  50.0%  4.0 GiB of 8.0 GiB\n"
              "              :-=\n"
              "              applications 3.5 GiB, wired 256.0 MiB, compressed 256.0 MiB\n"
              "              cached files 3.0 GiB, free 1.0 GiB, swapped out 0 bytes\n"
              "\n"
              "System        ############-----------------  40.0%  40.0 GiB of 100.0 GiB\n"
              "Data          ############################-  95.0%  950.0 GiB of 1000.0 GiB\n"
              "\n"
              "Processes     213, 2 inactive\n"
              "              editor, job\n");
}

TEST_F(WatchView, OnASmallOneDetailsAreLeftOut) {
    EXPECT_EQ(frame(threeSamples(), sized(40, 10)), "2024-05-01 08:22:33 UTC  every 1 s\n"
                                                    "CPU       #################------  75.0%\n"
                                                    "          user 65.0%, system 10.0%\n"
                                                    "          :=*\n"
                                                    "Memory    ############-----------  50.0%\n"
                                                    "          4.0 GiB of 8.0 GiB\n"
                                                    "          :-=\n"
                                                    "System    #########--------------  40.0%\n"
                                                    "Data      ######################-  95.0%\n"
                                                    "Processes 213, 2 inactive\n");
}

TEST_F(WatchView, OnATinyOneOnlyTheFiguresAreLeft) {
    EXPECT_EQ(frame(threeSamples(), sized(20, 5)), "CPU    #####-  75.0%\n"
                                                   "Memory ###---  50.0%\n"
                                                   "System ##----  40.0%\n"
                                                   "Data   ######  95.0%\n"
                                                   "Procs  213\n");
}

TEST_F(WatchView, NoLineIsWiderAndNoFrameHigherThanTheTerminal) {
    WatchSample sample = sampleWith(75, 4 * kGiB);
    sample.volumes.front().name = "\u65e5\u672c\u65e5\u672c\u65e5\u672c\u65e5\u672c\u65e5\u672c\n\x1b[2J";
    sample.processes->inactiveProcesses.assign(100, "e\u0301diteur");
    const WatchHistory history = historyOf(sample);
    for (const bool blocks : {false, true}) {
        for (std::size_t width = 1; width <= 120; ++width) {
            WatchStyle style = sized(width, 1 + width % 24, width % 2 == 0);
            style.blocks = blocks;
            const std::vector<std::string> lines = watchFrame(history, style);
            EXPECT_LE(lines.size(), style.height);
            for (const std::string& line : lines) {
                EXPECT_LE(displayWidth(displayText(withoutColor(line))), width) << line;
                EXPECT_FALSE(line.ends_with(' ')) << line;
            }
        }
    }
}

TEST_F(WatchView, ATerminalWithoutSizeHasALine) {
    EXPECT_EQ(watchFrame(threeSamples(), sized(0, 0)), std::vector<std::string>{""});
}

TEST_F(WatchView, ColorAddsNothingButSequences) {
    for (const auto& [width, height] : {std::pair{80, 24}, {40, 10}, {20, 5}}) {
        const std::string colored = frame(threeSamples(), sized(std::size_t(width), std::size_t(height), true));
        EXPECT_EQ(withoutColor(colored), frame(threeSamples(), sized(std::size_t(width), std::size_t(height))));
        EXPECT_THAT(colored, HasSubstr("\x1b[36mCPU\x1b[0m"));
    }
}

TEST_F(WatchView, SharesHaveTheColorOfTheirHeight) {
    EXPECT_THAT(watchFrame(threeSamples(), sized(20, 5, true)),
                ElementsAre("\x1b[36mCPU\x1b[0m    \x1b[33m#####\x1b[0m\x1b[2m-\x1b[0m  75.0%",
                            "\x1b[36mMemory\x1b[0m \x1b[32m###\x1b[0m\x1b[2m---\x1b[0m  50.0%",
                            "\x1b[36mSystem\x1b[0m \x1b[32m##\x1b[0m\x1b[2m----\x1b[0m  40.0%",
                            "\x1b[36mData\x1b[0m   \x1b[31m######\x1b[0m  95.0%", "\x1b[36mProcs\x1b[0m  213"));
}

TEST_F(WatchView, BlocksStandWhereTheTerminalHasThem) {
    WatchStyle style = sized(40, 10);
    style.blocks = true;
    const std::vector<std::string> lines = watchFrame(threeSamples(), style);
    EXPECT_EQ(lines[1], "CPU       █████████████████░░░░░░  75.0%");
    EXPECT_EQ(lines[3], "          ▃▅▇");
}

TEST_F(WatchView, ALoadThatIsNoNumberLeavesAGapInTheCurve) {
    WatchHistory history;
    for (const double load : {25.0, kNotANumber, 100.0}) {
        history.add(sampleWith(load, kGiB));
    }
    EXPECT_THAT(watchFrame(history, sized(80, 24)), Contains("              : #"));
    EXPECT_THAT(frame(historyOf(sampleWith(kNotANumber, kGiB)), sized(80, 24)),
                HasSubstr("\nCPU           not reported\n\nMemory"));
}

TEST_F(WatchView, TheCurveEndsWithTheLatestSampleThatThereIsRoomFor) {
    WatchHistory history;
    for (int count = 0; count < 100; ++count) {
        history.add(sampleWith(25, kGiB));
    }
    history.add(sampleWith(100, kGiB));
    EXPECT_THAT(watchFrame(history, sized(40, 10)), Contains("          " + std::string(29, ':') + "#"));
}

TEST_F(WatchView, SharesBeyondTheirBoundsFillABarAtMost) {
    EXPECT_EQ(watchFrame(historyOf(sampleWith(250, kGiB)), sized(20, 5))[0], "CPU    ###### 250.0%");
    EXPECT_EQ(watchFrame(historyOf(sampleWith(-50, kGiB)), sized(20, 5))[0], "CPU    ------ -50.0%");
}

TEST_F(WatchView, MemoryOfUnknownSizeHasNoShare) {
    WatchSample sample = sampleWith(25, 2 * kGiB);
    sample.memory->installed = {};
    EXPECT_THAT(frame(historyOf(sample), sized(80, 24)), HasSubstr("\nMemory        2.0 GiB used\n"));
}

TEST_F(WatchView, VolumesThatHaveNoRoomAreCounted) {
    WatchSample sample = sampleWith(25, 2 * kGiB);
    sample.volumes.resize(11, sample.volumes.front());
    const std::vector<std::string> lines = watchFrame(historyOf(sample), sized(40, 6));
    EXPECT_THAT(lines[2], testing::StartsWith("System "));
    EXPECT_THAT(lines[3], testing::StartsWith("Data "));
    EXPECT_EQ(lines[4], "          and 9 more volumes");
    EXPECT_THAT(lines[5], testing::StartsWith("Processes "));
}

TEST_F(WatchView, TheIntervalIsInTheTitle) {
    WatchStyle style = sized(80, 24);
    style.interval = std::chrono::milliseconds(2500);
    EXPECT_THAT(watchFrame(threeSamples(), style)[0], HasSubstr("every 2.5 s"));
}

TEST_F(WatchView, AFrameIsDrawnOverTheLastOneAndErasesBeforeItWrites) {
    EXPECT_EQ(drawnInPlace({"one"}), "\x1b[H\x1b[Jone");
    EXPECT_EQ(drawnInPlace({"one", "", "three"}), "\x1b[H\x1b[Kone\r\n\x1b[K\r\n\x1b[Jthree");
}

TEST(StyledLines, NeverBecomeWiderThanTheyMay) {
    StyledLine line(5, false);
    line.append("ab").skip(1).append("\u65e5\u672c");
    EXPECT_EQ(line.text(), "ab \u65e5");
    EXPECT_EQ(line.room(), 0U);
    EXPECT_EQ(line.append("x").text(), "ab \u65e5");
}

TEST(StyledLines, CellsAreFilledUpOrCut) {
    StyledLine line(20, false);
    line.appendCell("abcdef", 4).appendCell("x", 3).appendCell("", 2).append("y").skip(2);
    EXPECT_EQ(line.text(), "abcdx    y");
    EXPECT_EQ(line.columns(), 12U);
}

TEST(StyledLines, BlanksAtTheEndAreLeftOut) {
    StyledLine line(3, false);
    EXPECT_EQ(line.append("ab cd").text(), "ab");
    EXPECT_EQ(line.columns(), 3U);
}

TEST(StyledLines, WhatMustNotBeCutIsLeftOutAndTheRestIsMarked) {
    EXPECT_EQ(StyledLine(4, false).appendWhole("12345").text(), "");
    EXPECT_EQ(StyledLine(5, false).appendWhole("12345").text(), "12345");
    EXPECT_EQ(StyledLine(6, false).appendShortened("editor, job").text(), "edi...");
    EXPECT_EQ(StyledLine(6, false).appendShortened("editor").text(), "editor");
    EXPECT_EQ(StyledLine(2, false).appendShortened("editor").text(), "ed");
}

TEST(StyledLines, TextsCannotSteerTheTerminal) {
    EXPECT_EQ(StyledLine(20, true).append("\x1b[2J", color::kLabel).text(), "\x1b[36m\\x1B[2J\x1b[0m");
    EXPECT_EQ(StyledLine(20, true).append("", color::kLabel).text(), "");
}

} // namespace qk::info
