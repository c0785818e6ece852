// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/recent_items/RecentItemsFixture.h"
#include "tests/tools/qkinfo/ScopedTimeZone.h"
#include "tools/qkinfo/CommandLine.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/TextRenderer.h"
#include "tools/qkinfo/commands/RecentFollowing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <stdexcept>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr double kEightTwentyTwo = 1'714'551'753; // 2024-05-01 08:22:33 UTC

/// Everything in the background is done while the main run loop runs.
class Recent : public qk::tests::RecentItemsFixture {
protected:
    static std::shared_ptr<RecentItem> item(const NSString& path, double date) {
        auto item = RecentItem::recentItemWithPath(path);
        item->setLatestInteractionDate(qk::tests::at(date));
        return item;
    }
    static std::string textOf(const List& list, const TextStyle& style = {}) {
        return renderText(std::vector{Section{"recent", "Recent items", list}}, style);
    }
    static json jsonOf(const List& list) {
        return json::parse(renderJson(std::vector{Section{"recent", "Recent items", list}}))["recent"];
    }

    std::unique_ptr<platform::RunLoopSource> background =
        machine.dispatch.mainRunLoop()->scheduleTimer(0.1, true, [this] { machine.dispatch.runBackground(); });
    ScopedTimeZone zone{"UTC0"};
};

std::string errorOf(const std::vector<std::string>& arguments) {
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->message : "(no error)";
}

} // namespace

TEST_F(Recent, NothingFoundIsASentence) {
    EXPECT_EQ(renderText(std::vector{recentSection({})}, {}), "Recent items\n  No recent items were found.\n");
    EXPECT_EQ(renderJson(std::vector{recentSection({})}), "{\n  \"recent\": []\n}\n");
}

TEST_F(Recent, ItemsAreToldLatestFirst) {
    addFile("/home/anna/Documents/letter", kEightTwentyTwo);
    addFile("/home/anna/Documents/poem", kEightTwentyTwo + 60);
    machine.fileManager.setResourceValue("/home/anna/Documents/poem", platform::NSURLIsWritableKey, Value(false));
    const std::vector sections{recentSection({})};
    EXPECT_EQ(renderText(sections, {}), "Recent items\n"
                                        "  Last used         Kind  Rights  Path\n"
                                        "  2024-05-01 08:23  file  r--     /home/anna/Documents/poem\n"
                                        "  2024-05-01 08:22  file  rw-     /home/anna/Documents/letter\n"
                                        "  2 items.\n");
    EXPECT_EQ(json::parse(renderJson(sections)), json::parse(R"({"recent": [
        {"last_used": "2024-05-01T08:23:33Z", "kind": "file", "readable": true, "writable": false,
         "executable": false, "path": "/home/anna/Documents/poem"},
        {"last_used": "2024-05-01T08:22:33Z", "kind": "file", "readable": true, "writable": true,
         "executable": false, "path": "/home/anna/Documents/letter"}]})"));
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
    EXPECT_TRUE(machine.fsEvents.streams().empty());
}

TEST_F(Recent, AnItemThatIsGoneHasNoFacts) {
    const json facts = jsonOf(recentList({RecentItem::recentItemWithPath(NSString("/gone"))}))[0];
    EXPECT_EQ(facts, json::parse(R"({"last_used": null, "kind": "unknown", "readable": false, "writable": false,
                                     "executable": false, "path": "/gone"})"));
}

TEST_F(Recent, KindsHaveWords) {
    machine.fileManager.addDirectory("/a");
    machine.fileManager.addSymbolicLink("/b", "a");
    EXPECT_EQ(jsonOf(recentList({RecentItem::recentItemWithPath(NSString("/a"))}))[0]["kind"], "folder");
    EXPECT_EQ(jsonOf(recentList({RecentItem::recentItemWithPath(NSString("/b"))}))[0]["kind"], "link");
}

TEST_F(Recent, AnotherHomeIsLookedAtInstead) {
    machine.fileManager.addDirectory("/data/bob/Music");
    machine.fileManager.addSymbolicLink("/bob", "data/bob");
    addFile("/home/anna/Documents/letter", 1);
    addFile("/data/bob/Music/song", 2);
    for (const char* home : {"/data/bob", "/data/bob/", "/bob"}) {
        const json list = json::parse(renderJson(std::vector{recentSection({.home = home})}))["recent"];
        ASSERT_EQ(list.size(), 1U) << home;
        EXPECT_EQ(list[0]["path"], "/data/bob/Music/song");
    }
}

TEST_F(Recent, AHomeThatCannotBeReadIsAnError) {
    machine.fileManager.addFile("/file");
    machine.fileManager.addDirectory("/closed");
    machine.fileManager.denyReading("/closed");
    for (const char* home : {"/nowhere", "/file", "/closed", ""}) {
        EXPECT_THROW(static_cast<void>(recentSection({.home = home})), std::runtime_error) << home;
    }
    EXPECT_TRUE(machine.fsEvents.streams().empty());
}

TEST_F(Recent, TheReportDoesNotWaitForEver) {
    background.reset();
    EXPECT_FALSE(recent({}).has_value());
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
    EXPECT_TRUE(machine.fsEvents.streams().empty());
}

TEST_F(Recent, TheReportShowsAllTwenty) {
    for (int number = 0; number < 25; ++number) {
        addFile("/home/anna/Documents/" + NSString::fromInteger(number), number + 1);
    }
    const auto command = std::ranges::find(commands(), "recent", &Command::name);
    const std::string report = renderText(std::vector{sectionForReport(*command, {})}, {});
    EXPECT_THAT(report, HasSubstr("/home/anna/Documents/24\n"));
    EXPECT_THAT(report, EndsWith("/home/anna/Documents/5\n  20 items.\n"));
}

TEST_F(Recent, LongPathsLoseTheirMiddleOnATerminalOnly) {
    const List list =
        recentList({item("/home/anna/Documents/" + NSString(std::u16string(80, u'x')) + "/letter.txt", 0)});
    EXPECT_EQ(textOf(list, {.paths = PathStyle::Elided}),
              "Recent items\n"
              "  Last used         Kind     Rights  Path\n"
              "  1970-01-01 00:00  unknown  ---     /home/anna/Documents...xxxxxxxxx/letter.txt\n"
              "  1 item.\n");
    EXPECT_THAT(textOf(list, {.paths = PathStyle::Whole}),
                HasSubstr("Documents/" + std::string(80, 'x') + "/letter.txt\n"));
    EXPECT_THAT(textOf(list), HasSubstr("\n" + std::string(36, ' ')));
}

TEST_F(Recent, HostileNamesAreOneLineAndJson) {
    const List list = recentList({item(NSString(u"/h/ a  b\n\x1b[2J\xdcff"), 0)});
    EXPECT_THAT(textOf(list, {.paths = PathStyle::Whole}), HasSubstr("  /h/ a  b\\x0A\\x1B[2J\ufffd\n"));
    EXPECT_EQ(jsonOf(list)[0]["path"], "/h/ a  b\n\x1b[2J\ufffd");
}

TEST_F(Recent, ChangesAreToldAsTheyCome) {
    std::vector<std::size_t> counts;
    {
        const RecentItemsWatch watch(std::nullopt, [&](const auto& items) { counts.push_back(items.size()); });
        settle();
        addFile("/home/anna/Documents/letter", 1);
        settle();
    }
    addFile("/home/anna/Documents/poem", 2);
    settle();
    EXPECT_THAT(counts, ElementsAre(0, 1));
}

TEST_F(Recent, LogTellsEachListOnce) {
    RecentLog log(false, {.paths = PathStyle::Whole});
    EXPECT_EQ(log.add(recentList({}), {0}), "Recent items at 1970-01-01 00:00:00 UTC\n  No recent items were found.\n");
    EXPECT_EQ(log.add(recentList({}), {1}), std::nullopt);
    const auto second = log.add(recentList({item("/a", 0)}), {2});
    EXPECT_THAT(second.value_or(""), StartsWith("\nRecent items at 1970-01-01 00:00:02 UTC\n  Last used "));
    EXPECT_NE(log.add(recentList({item("/a", 1)}), {3}), std::nullopt);
}

TEST_F(Recent, LogInJsonIsALineForEachList) {
    RecentLog log(true, {});
    EXPECT_EQ(log.add(recentList({}), {0}), "{\"time\":\"1970-01-01T00:00:00Z\",\"recent\":[]}\n");
    EXPECT_EQ(log.add(recentList({}), {1}), std::nullopt);
    const auto line = log.add(recentList({item("/a", 0)}), {2});
    EXPECT_EQ(json::parse(line.value_or(""))["recent"][0]["path"], "/a");
}

TEST_F(Recent, FrameSaysThatItLooksThenWhatItFound) {
    EXPECT_THAT(recentFrame(std::nullopt, {}, {}, 24), ElementsAre("Recent items, q quits", "  Looking for them."));
    EXPECT_THAT(recentFrame(recentList({item("/a", 0)}), {0}, {}, 24),
                ElementsAre("Recent items at 1970-01-01 00:00:00 UTC, q quits", StartsWith("  Last used "),
                            EndsWith("  /a"), "  1 item."));
}

TEST_F(Recent, FrameIsNoHigherThanItsScreen) {
    const RecentItemsObserver::Items items(20, item("/a", 0));
    EXPECT_EQ(recentFrame(recentList(items), {}, {}, 10).size(), 10U);
    EXPECT_EQ(recentFrame(recentList(items), {}, {}, 0).size(), 1U);
}

TEST(RecentCommandLine, FollowsAHomeFolder) {
    const auto parsed = parseCommandLine({"recent", "--follow", "--home", "[a]", "--json"});
    const auto* invocation = std::get_if<RecentInvocation>(&parsed);
    ASSERT_NE(invocation, nullptr);
    EXPECT_TRUE(invocation->options.follows && invocation->json);
    EXPECT_EQ(invocation->options.home, "[a]");
    EXPECT_EQ(std::get<RecentInvocation>(parseCommandLine({"recent"})).options.home, std::nullopt);
    EXPECT_THAT(errorOf({"recent", "--home"}), HasSubstr("--home"));
    EXPECT_THAT(errorOf({"recent", "a"}), HasSubstr("unexpected argument \"a\""));
}

} // namespace qk::info
