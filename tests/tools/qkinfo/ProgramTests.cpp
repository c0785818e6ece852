// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Status 2, nothing on standard output and one line on standard error.
void expectFailure(const Finished& finished, const std::string& text) {
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.output, "");
    EXPECT_THAT(finished.error, StartsWith("qkinfo: "));
    EXPECT_THAT(finished.error, HasSubstr(text));
    EXPECT_EQ(std::ranges::count(finished.error, '\n'), 1);
    EXPECT_EQ(finished.error.back(), '\n');
}

} // namespace

TEST(Program, SaysItsVersion) {
    const Finished finished = Workshop().run({"--version"});
    EXPECT_EQ(finished.output, "qkinfo " QKINFO_VERSION "\n");
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.error, "");
}

TEST(Program, SaysItsUsage) {
    const Finished finished = Workshop().run({"--help"});
    EXPECT_THAT(finished.output, HasSubstr("Usage: qkinfo "));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.error, "");
}

TEST(Program, FailsWithOneLineForACommandLineThatMakesNoSense) {
    const Workshop workshop;
    expectFailure(workshop.run({}), "no command given");
    expectFailure(workshop.run({"frobnicate"}), "there is no command \"frobnicate\"");
    expectFailure(workshop.run({"report", "--jsn"}), "\"--jsn\"");
    expectFailure(workshop.run({"a\nb\x1b[31m"}), "a b\\x1B[31m");
    expectFailure(workshop.run({"report", "--color=\xff"}), "is not auto, always or never");
    expectFailure(workshop.run({"watch", "--interval=0.01"}), "is not a number from 0.1 to 3600");
    expectFailure(workshop.run({"watch", "--count=0"}), "is not a whole number from 1");
}

TEST(Program, ReportHasASectionForEachSubject) {
    const Finished finished = Workshop().run({"report"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.error, "");
    EXPECT_THAT(finished.output, StartsWith("Operating system\n  "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nHardware\n  "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nProcessor load\n  Measured over "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nMemory\n  Installed "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nVolumes\n  "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nProcesses\n  Processes "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nNetwork\n  "));
    EXPECT_THAT(finished.output, HasSubstr("\n\nRecent items\n  "));
    EXPECT_THAT(finished.output, testing::EndsWith("\n\nUpdates\n  Up to date.\n"));
}

TEST(Program, ReportInAPipeHasEightyColumnsAndNoSequences) {
    const Finished finished = Workshop().run({"report"});
    EXPECT_THAT(finished.output, Not(HasSubstr("\x1b")));
    std::istringstream lines(finished.output);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(Program, JsonHasAMemberForEachSection) {
    const Workshop workshop;
    const json report = json::parse(workshop.run({"report", "--json"}).output);
    EXPECT_TRUE(report["network"].is_array());
    EXPECT_TRUE(report.contains("recent"));
    for (const std::string name : {"os", "hardware", "updates"}) {
        EXPECT_TRUE(report.contains(name));
        const json single = json::parse(workshop.run({name, "--json"}).output);
        EXPECT_EQ(single, json({{name, report[name]}}));
    }
    EXPECT_GT(report["hardware"]["memory_bytes"], 0);
    EXPECT_GT(report["hardware"]["logical_processors"], 0);
    EXPECT_EQ(report["updates"], json::array());
}

TEST(Program, TheLoadIsTold) {
    const Workshop workshop;
    const json load = json::parse(workshop.run({"cpu", "--json"}).output)["cpu"];
    EXPECT_GE(load["interval_ms"], 250);
    if (!load["total_percent"].is_null()) { // which it is where a clock tick takes longer
        EXPECT_NEAR(load["total_percent"].get<double>() + load["idle_percent"].get<double>(), 100, 0.001);
    }
    EXPECT_GT(json::parse(workshop.run({"memory", "--json"}).output)["memory"]["used_bytes"], 0);
    EXPECT_TRUE(json::parse(workshop.run({"volumes", "--json"}).output)["volumes"].is_array());
    EXPECT_GT(json::parse(workshop.run({"processes", "--json"}).output)["processes"]["processes"], 0);
}

TEST(Program, WatchInAPipeIsALineASampleWithoutSequences) {
    const Finished finished = Workshop().run({"watch", "--interval", "0.1", "--count=2", "--color=always"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.error, "");
    EXPECT_EQ(std::ranges::count(finished.output, '\n'), 2);
    EXPECT_THAT(finished.output, HasSubstr("  memory "));
    EXPECT_THAT(finished.output, testing::EndsWith(" inactive\n"));
    EXPECT_THAT(finished.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(finished.output, Not(HasSubstr("\r")));
}

TEST(Program, WatchInJsonIsAnObjectALine) {
    const Finished finished = Workshop().run({"watch", "--interval=0.1", "--count", "3", "--json"});
    std::istringstream lines(finished.output);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const json sample = json::parse(line);
        EXPECT_TRUE(sample["time"].is_string());
        EXPECT_GT(sample["cpu"]["interval_ms"], 0);
        EXPECT_GT(sample["memory"]["used_bytes"], 0);
        EXPECT_TRUE(sample["volumes"].is_array());
        EXPECT_GT(sample["processes"]["processes"], 0);
    }
    EXPECT_EQ(count, 3U);
}

TEST(Program, WatchEndsWhenNobodyReads) {
    const Finished finished = Workshop().run({"watch", "--interval=0.1"}, OutputPlace::NoReader);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.error, "");
}

TEST(Program, ReportLeavesUpdatesAndRecentItemsOutWhenTold) {
    Workshop workshop;
    workshop.removeUpdateTool();
    const Finished text = workshop.run({"report", "--no-updates", "--no-recent"});
    EXPECT_THAT(text.output, Not(HasSubstr("Updates")));
    EXPECT_THAT(text.output, Not(HasSubstr("Recent items")));
    EXPECT_FALSE(json::parse(workshop.run({"report", "--no-updates", "--json"}).output).contains("updates"));
}

TEST(Program, UpdatesWithoutAToolFailAndTheReportDoesNot) {
    Workshop workshop;
    workshop.removeUpdateTool();
    expectFailure(workshop.run({"updates"}), "cannot launch");
    expectFailure(workshop.run({"updates", "--json"}), "cannot launch");
    const Finished report = workshop.run({"report"});
    EXPECT_EQ(report.status, 0);
    EXPECT_EQ(report.error, "");
    EXPECT_THAT(report.output, testing::EndsWith("\nUpdates\n  not reported by this system\n"));
}

TEST(Program, UpdatesThatNobodyTellsAreNull) {
    Workshop workshop;
    workshop.setUpdateTool("exit 1");
    EXPECT_EQ(json::parse(workshop.run({"updates", "--json"}).output), json::parse(R"({"updates": null})"));
    EXPECT_EQ(workshop.run({"updates"}).output, "Updates\n  not reported by this system\n");
}

TEST(Program, UpdatesAreListed) {
    Workshop workshop;
    workshop.setUpdateTool(R"(printf '   * ExampleTool-2.1\n\tExample Tool (2.1), 20480K [recommended]\n')");
    const Finished finished = workshop.run({"updates"});
    EXPECT_EQ(finished.output, "Updates\n"
                               "  Name         Version  Size    Flags\n"
                               "  ExampleTool  2.1      20480K  recommended\n"
                               "  1 update.\n");
    EXPECT_EQ(finished.error, "");
}

TEST(Program, ColorComesWhenTold) {
    Workshop workshop;
    workshop.setVariable("NO_COLOR=1");
    EXPECT_THAT(workshop.run({"os", "--color=always"}).output, StartsWith("\x1b[1mOperating system\x1b[0m\n"));
    EXPECT_THAT(workshop.run({"os", "--color=auto"}).output, StartsWith("Operating system\n"));
    EXPECT_THAT(workshop.run({"os", "--json", "--color=always"}).output, StartsWith("{"));
}

TEST(Program, OutputThatCannotBeWrittenIsAFailure) {
    const Workshop workshop;
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"os"},
                                                      {"report", "--json"},
                                                      {"--help"},
                                                      {"--version"},
                                                      {"watch", "--interval=0.1"}}) {
        expectFailure(workshop.run(arguments, OutputPlace::Closed), "cannot write to standard output: ");
        expectFailure(workshop.run(arguments, OutputPlace::Full), "cannot write to standard output: ");
    }
}

TEST(Program, AReaderThatHasSeenEnoughIsNoFailure) {
    const Finished finished = Workshop().run({"report"}, OutputPlace::NoReader);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.signal, 0);
    EXPECT_EQ(finished.error, "");
}

} // namespace qk::info
