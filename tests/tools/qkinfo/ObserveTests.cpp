// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/tools/qkinfo/ScopedTimeZone.h"
#include "tools/qkinfo/CommandLine.h"
#include "tools/qkinfo/commands/Observe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <stdexcept>

namespace qk::info {

namespace {

using namespace qk::platform;
using namespace std::chrono_literals;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr FSEventStreamEventFlags kNewFile = kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsFile;

class Observe : public testing::Test {
protected:
    Observe() { machine.fileManager.addDirectory("/data/a"); }

    /// Watches until all `steps` were taken, a second apart, and then is interrupted.
    ObserveEnd run(const ObserveOptions& options, std::vector<std::function<void()>> steps = {}) {
        steps.emplace_back([this] { machine.signalSources.deliver(SIGINT); });
        std::size_t next = 0;
        const auto timer = machine.dispatch.mainRunLoop()->scheduleTimer(1, true, [&] {
            if (next < steps.size()) {
                steps[next++]();
            }
        });
        return observe(
            options, [&] { ++watching; },
            [&](const Changes& changes) {
                told.insert(told.end(), changes.names.begin(), changes.names.end());
                folders.insert(folders.end(), changes.folders.begin(), changes.folders.end());
                return goesOn;
            });
    }
    std::function<void()> event(const NSString& path, FSEventStreamEventFlags flags = kNewFile) {
        return [this, path, flags] { machine.fsEvents.emit(path, flags); };
    }

    memory::Machine machine;
    memory::ScopedMachine installed{machine};
    int watching = 0;
    bool goesOn = true;
    std::vector<std::string> told;
    std::vector<std::string> folders;
};

std::string errorOf(const std::vector<std::string>& arguments) {
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->message : "(no error)";
}

ObserveOptions optionsOf(const std::vector<std::string>& arguments) {
    return std::get<ObserveInvocation>(parseCommandLine(arguments)).options;
}

} // namespace

TEST_F(Observe, APathThatDoesNotExistIsAnError) {
    for (const std::string path : {"/nowhere", ""}) {
        EXPECT_THROW(run({.paths = {"/data", path}}), std::runtime_error) << path;
    }
    EXPECT_EQ(watching, 0);
    EXPECT_THAT(machine.fsEvents.calls(), IsEmpty());
}

TEST_F(Observe, WhatCannotBeWatchedIsAnError) {
    machine.fsEvents.failStart();
    EXPECT_THROW(run({.paths = {"/data"}}), std::runtime_error);
    machine.fsEvents.refuseStreams();
    EXPECT_THROW(run({.paths = {"/data"}}), std::runtime_error);
    EXPECT_EQ(watching, 0);
}

TEST_F(Observe, AnInterruptEndsItAndItsStream) {
    EXPECT_EQ(run({.paths = {"/data"}}), ObserveEnd::Interrupted);
    EXPECT_EQ(watching, 1);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_TRUE(machine.fsEvents.streams().empty());
}

TEST_F(Observe, ChangesAreTold) {
    EXPECT_EQ(run({.paths = {"/data"}}, {event("/data/a/x"), event("/elsewhere/y"), event("/data/z", 0)}),
              ObserveEnd::Interrupted);
    EXPECT_THAT(told, ElementsAre("x", "z"));
    EXPECT_THAT(folders, ElementsAre("/data/a", "/data"));
}

TEST_F(Observe, NamesKindsAndChangesAreAskedFor) {
    const auto folder = event("/data/new", kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
    run({.paths = {"/data"}, .names = {"ew", "other"}, .itemType = FileSystemObserverItemTypeDirectory},
        {folder, event("/data/news"), event("/data/a")});
    EXPECT_THAT(told, ElementsAre("new"));
    run({.paths = {"/data"}, .changes = FileSystemObserverChangeCreated | FileSystemObserverChangeRemoved},
        {event("/data/x"), event("/data/y", kNewFile | kFSEventStreamEventFlagItemRemoved)});
    EXPECT_THAT(told, ElementsAre("new", "y"));
}

TEST_F(Observe, OnlyAChangeThatIsLeftOutLooksAtTheTime) {
    const ObserveOptions options{.paths = {"/data"}, .names = {"x"}, .timeout = 2500ms};
    EXPECT_EQ(run(options), ObserveEnd::Interrupted);
    EXPECT_EQ(run(options, {event("/data/other"), [] {}, [] {}, event("/data/x")}), ObserveEnd::Interrupted);
    EXPECT_EQ(run(options, {[] {}, [] {}, event("/data/other"), [] {}}), ObserveEnd::TimedOut);
    EXPECT_THAT(told, ElementsAre("x"));
}

TEST_F(Observe, EndsWhenItIsTold) {
    goesOn = false;
    EXPECT_EQ(run({.paths = {"/data"}}, {event("/data/x"), [] {}, event("/data/y")}), ObserveEnd::Ended);
    EXPECT_THAT(told, ElementsAre("x"));
    EXPECT_TRUE(machine.fsEvents.streams().empty());
}

TEST(ObserveText, IsALineForEachFile) {
    const ScopedTimeZone zone("CET-1");
    EXPECT_EQ(changeLines({}, {0}), "");
    EXPECT_EQ(changeLines({{"a", "b\n\x1b  \xff"}, {"/x", "/"}}, {0}),
              "1970-01-01 01:00:00 CET  a  /x\n"
              "1970-01-01 01:00:00 CET  b\\x0A\\x1B  \ufffd  /\n");
}

TEST(ObserveText, InJsonIsALineForEachBatch) {
    EXPECT_EQ(changesJsonLine({{"a"}, {"/x"}}, {0}),
              "{\"time\":\"1970-01-01T00:00:00Z\",\"changes\":[{\"name\":\"a\",\"folder\":\"/x\"}]}\n");
    const std::string line = changesJsonLine({{"b\n\x1b  \xff\""}, {" "}}, {0});
    EXPECT_EQ(std::ranges::count(line, '\n'), 1);
    EXPECT_EQ(json::parse(line)["changes"][0], json::parse(R"({"name": "b\n\u001b  \ufffd\"", "folder": " "})"));
}

TEST(ObserveCommandLine, NeedsAPath) {
    EXPECT_EQ(errorOf({"observe"}), "PATH is required (see qkinfo --help)");
    EXPECT_EQ(errorOf({"observe", "--name", "a"}), "PATH is required (see qkinfo --help)");
}

TEST(ObserveCommandLine, HasPathsAndNames) {
    const ObserveOptions options =
        optionsOf({"observe", "--name", "x", "[a]", "b", "--name=[y]", "--name", "--created", "--", "--name"});
    EXPECT_THAT(options.paths, ElementsAre("[a]", "b", "--name"));
    EXPECT_THAT(options.names, ElementsAre("x", "[y]", "--created"));
    EXPECT_THAT(errorOf({"observe", "a", "--name", ""}), HasSubstr("an empty name is no part of any"));
}

TEST(ObserveCommandLine, HasKindsAndChanges) {
    EXPECT_EQ(optionsOf({"observe", "a"}).itemType, FileSystemObserverItemTypeAny);
    EXPECT_EQ(optionsOf({"observe", "a"}).changes, 0);
    EXPECT_EQ(optionsOf({"observe", "a"}).timeout, std::nullopt);
    EXPECT_EQ(optionsOf({"observe", "a", "--folders"}).itemType, FileSystemObserverItemTypeDirectory);
    EXPECT_EQ(optionsOf({"observe", "a", "--files"}).itemType, FileSystemObserverItemTypeFile);
    EXPECT_EQ(optionsOf({"observe", "a", "--created", "--removed"}).changes, 2 | 8);
    EXPECT_EQ(optionsOf({"observe", "a", "--modified"}).changes, 4);
    EXPECT_EQ(optionsOf({"observe", "a", "--timeout", "2.5"}).timeout, 2500ms);
    EXPECT_THAT(errorOf({"observe", "a", "--folders", "--files"}), HasSubstr("excludes"));
    EXPECT_THAT(errorOf({"observe", "a", "--timeout=0"}), HasSubstr("is not a number from 0.1 to 3600"));
}

} // namespace qk::info
