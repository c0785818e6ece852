// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/tools/qkinfo/ManualClock.h"
#include "tools/qkinfo/watch/Watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <limits>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::ElementsAre;

/// A console whose events are written down, and which writes down what it is told.
class ScriptedConsole final : public WatchConsole {
public:
    explicit ScriptedConsole(std::vector<WatchEvent> events) : events_(std::move(events)) {}

    WatchEvent next() override {
        if (position_ == events_.size()) {
            ADD_FAILURE() << "waits for more than there is";
            return WatchEvent::Quit;
        }
        return events_[position_++];
    }
    int show(const WatchHistory& history) override { return say("show", history); }
    int showAgain(const WatchHistory& history) override { return say("again", history); }
    int finish(const WatchHistory& history) override { return say("finish", history); }

    std::vector<std::string> said;
    int error = 0;

private:
    int say(const std::string& word, const WatchHistory& history) {
        said.push_back(word + " " + std::to_string(history.samples()));
        return error;
    }

    std::vector<WatchEvent> events_;
    std::size_t position_ = 0;
};

class CountingSource final : public WatchSource {
public:
    WatchSample take() override {
        ++taken;
        return {};
    }
    int taken = 0;
};

constexpr WatchEvent kSample = WatchEvent::Sample;
constexpr WatchEvent kRedraw = WatchEvent::Redraw;
constexpr WatchEvent kQuit = WatchEvent::Quit;

} // namespace

TEST(WatchLoop, WhoQuitsAtOnceHasSeenNothing) {
    CountingSource source;
    ScriptedConsole console({kQuit});
    EXPECT_EQ(runWatch(std::nullopt, source, console), 0);
    EXPECT_EQ(source.taken, 0);
    EXPECT_THAT(console.said, ElementsAre("finish 0"));
}

TEST(WatchLoop, EndsWithTheLastOfTheCountedSamples) {
    CountingSource source;
    ScriptedConsole console({kSample, kSample, kSample});
    EXPECT_EQ(runWatch(3, source, console), 0);
    EXPECT_EQ(source.taken, 3);
    EXPECT_THAT(console.said, ElementsAre("show 1", "show 2", "show 3", "finish 3"));
}

TEST(WatchLoop, DrawingAgainTakesNoSample) {
    CountingSource source;
    ScriptedConsole console({kRedraw, kSample, kRedraw, kRedraw, kSample});
    EXPECT_EQ(runWatch(2, source, console), 0);
    EXPECT_EQ(source.taken, 2);
    EXPECT_THAT(console.said, ElementsAre("show 1", "again 1", "again 1", "show 2", "finish 2"));
}

TEST(WatchLoop, WithoutACountItGoesOnUntilTheUserQuits) {
    CountingSource source;
    std::vector<WatchEvent> events(1500, kSample);
    events.push_back(kQuit);
    ScriptedConsole console(events);
    EXPECT_EQ(runWatch(std::nullopt, source, console), 0);
    EXPECT_EQ(source.taken, 1500);
}

TEST(WatchLoop, OutputThatFailsEndsIt) {
    CountingSource source;
    ScriptedConsole console({kSample});
    console.error = EPIPE;
    EXPECT_EQ(runWatch(std::nullopt, source, console), EPIPE);
    EXPECT_THAT(console.said, ElementsAre("show 1"));
}

TEST(WatchHistory, KeepsTheLatestShares) {
    WatchHistory history;
    EXPECT_TRUE(history.isEmpty());
    WatchSample sample;
    for (int load = 0; load <= 1000; ++load) {
        sample.processors = ProcessorLoad{{1000}, {0, 0, static_cast<double>(load), 0}};
        history.add(sample);
    }
    EXPECT_EQ(history.processors().size(), 1000U);
    EXPECT_EQ(history.processors().front(), 1);
    EXPECT_EQ(history.processors().back(), 1000);
    EXPECT_EQ(history.memory().back(), std::nullopt);
    sample.processors->shares.totalLoad = std::numeric_limits<double>::quiet_NaN();
    history.add(sample);
    EXPECT_EQ(history.processors().back(), std::nullopt);
}

TEST(MachineSource, EverySampleCoversTheTimeSinceThePreviousOne) {
    platform::memory::Machine machine;
    const platform::memory::ScopedMachine installed(machine);
    ManualClock clock;
    machine.hostStatistics.addProcessorTicks({{100, 100, 100, 100}});
    machine.hostStatistics.addProcessorTicks({{101, 100, 103, 100}});
    machine.hostStatistics.refuseProcessorTicks(EPERM);
    machine.hostStatistics.addProcessorTicks({{102, 101, 105, 100}});
    MachineSource source(clock);

    clock.wait(std::chrono::milliseconds(250));
    WatchSample sample = source.take();
    EXPECT_EQ(sample.time, clock.moment());
    ASSERT_TRUE(sample.processors.has_value());
    EXPECT_EQ(sample.processors->covered, Milliseconds{250});
    EXPECT_EQ(processorPercent(sample), 25);

    clock.wait(std::chrono::seconds(1));
    EXPECT_FALSE(source.take().processors.has_value());

    clock.wait(std::chrono::seconds(1));
    sample = source.take();
    ASSERT_TRUE(sample.processors.has_value());
    EXPECT_EQ(sample.processors->covered, Milliseconds{2000});
    EXPECT_EQ(processorPercent(sample), 50);

    clock.wait(std::chrono::seconds(1));
    EXPECT_EQ(processorPercent(source.take()), std::nullopt) << "no tick has passed";
}

TEST(WatchLines, WhatTheMachineRefusesIsNotReported) {
    const std::string absent = "not reported by this system";
    EXPECT_THAT(watchLine({}),
                testing::EndsWith("  cpu " + absent + "  memory " + absent + "  processes " + absent + "\n"));
    EXPECT_EQ(json::parse(watchJsonLine({})), json::parse(R"({"time": "1970-01-01T00:00:00Z", "cpu": null,
                                                              "memory": null, "volumes": [], "processes": null})"));
}

TEST(WatchLines, ASampleIsOneLine) {
    WatchSample sample;
    sample.processors = ProcessorLoad{{1000}, {10, 20, 30, 70}};
    sample.memory = MemoryUse{{4096}, {}};
    sample.memory->data.usedMemory = 1024;
    sample.volumes = {{false, false, false, false, "da\nta", 4096, 1024, 0},
                      {false, false, false, false, "", 1024, 2048, 0}};
    sample.processes = QKHardwareProcessUsageData{7, {"a", "b"}};
    EXPECT_THAT(watchLine(sample),
                testing::EndsWith("  cpu 30.0%  memory 1.0 KiB of 4.0 KiB (25.0%)  da ta 3.0 KiB of 4.0 KiB  "
                                  "volume ? of 1.0 KiB  processes 7, 2 inactive\n"));
    const std::string line = watchJsonLine(sample);
    EXPECT_EQ(std::ranges::count(line, '\n'), 1);
    const json object = json::parse(line);
    EXPECT_EQ(object["cpu"]["total_percent"], 30);
    EXPECT_EQ(object["memory"]["used_bytes"], 1024);
    EXPECT_EQ(object["volumes"].at(0)["name"], "da\nta");
    EXPECT_EQ(object["processes"]["inactive_processes"], json({"a", "b"}));
}

TEST(WatchStyles, BlocksAreForLanguagesInUtf8) {
    EXPECT_FALSE(showsBlocks(nullptr, nullptr, nullptr));
    EXPECT_FALSE(showsBlocks("C", nullptr, "en_US.UTF-8"));
    EXPECT_TRUE(showsBlocks("", "", "C.UTF-8"));
    EXPECT_TRUE(showsBlocks(nullptr, "de_DE.utf8", "C"));
    EXPECT_FALSE(showsBlocks(nullptr, "de_DE.ISO-8859-1", "C.UTF-8"));
}

} // namespace qk::info
