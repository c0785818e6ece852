// SPDX-License-Identifier: Apache-2.0
// The program as it watches real files.
#include "tests/tools/qkinfo/OnTerminal.h"
#include "tests/tools/qkinfo/Running.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr int kFailure = 2;

/// A folder to watch, and one that is a home.
class Files : public testing::Test {
protected:
    Files() {
        std::filesystem::create_directories(folder / "deep");
        std::filesystem::create_directories(home / "Documents");
        write(home / "Documents/letter.txt");
    }
    static void write(const std::filesystem::path& path) { std::ofstream(path) << "text\n"; }

    /// The folder as events tell it.
    [[nodiscard]] std::string told(const std::string& name = "") const {
        return std::filesystem::canonical(folder / name).string();
    }
    static std::vector<std::string> pathsIn(const json& list) {
        std::vector<std::string> paths;
        for (const json& each : list) {
            paths.push_back(std::filesystem::path(each["path"]).filename());
        }
        return paths;
    }

    Workshop workshop;
    std::filesystem::path folder = workshop.path("folder");
    std::filesystem::path home = workshop.path("home");
};

class ObserveProgram : public Files {};
class RecentProgram : public Files {};

} // namespace

TEST_F(ObserveProgram, APathThatIsNotThereIsOneLineOfError) {
    const Finished finished = workshop.run({"observe", folder, folder / "none"});
    EXPECT_EQ(finished.status, kFailure);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.error, "qkinfo: there is no file or folder \"" + (folder / "none").string() + "\"\n");
}

TEST_F(ObserveProgram, FoldersAndFilesAtOnceIsOneLineOfError) {
    const Finished finished = workshop.run({"observe", "--folders", "--files", folder});
    EXPECT_EQ(finished.status, kFailure);
    EXPECT_THAT(finished.error, HasSubstr("excludes"));
}

TEST_F(ObserveProgram, EachChangedFileIsALineUntilAnInterrupt) {
    Running program(workshop, {"observe", folder});
    EXPECT_EQ(program.nextErrorLine(), "qkinfo: watching \"" + folder.string() + "\"");
    write(folder / "deep/a b\n");
    EXPECT_THAT(program.nextLine(), EndsWith("  a b\\x0A  " + told("deep")));
    std::filesystem::remove(folder / "deep/a b\n");
    EXPECT_THAT(program.nextLine(), StartsWith("20"));
    program.send(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.error, "");
}

TEST_F(ObserveProgram, InJsonEachBatchIsALine) {
    Running program(workshop, {"observe", folder, "--json", "--folders", "--created"});
    EXPECT_THAT(program.nextErrorLine(), HasSubstr("watching"));
    write(folder / "no-folder");
    std::filesystem::create_directory(folder / "new\x1b\xff");
    const json batch = json::parse(program.nextLine());
    EXPECT_TRUE(batch["time"].is_string());
    EXPECT_EQ(batch["changes"], json::array({{{"name", "new\x1b\ufffd"}, {"folder", told()}}}));
    program.send(SIGINT);
    EXPECT_EQ(program.finish().status, 0);
}

TEST_F(ObserveProgram, OnlyTheNamesThatWereAskedFor) {
    Running program(workshop, {"observe", folder, "--name", "yes", "--name=also"});
    EXPECT_THAT(program.nextErrorLine(), HasSubstr("watching"));
    write(folder / "no");
    write(folder / "oh-yes.txt");
    EXPECT_THAT(program.nextLine(), EndsWith("  oh-yes.txt  " + told()));
    program.send(SIGINT);
    EXPECT_EQ(program.finish().output, "");
}

TEST_F(ObserveProgram, GivesUpAtAChangeThatIsLeftOut) {
    Running program(workshop, {"observe", folder, "--name", "yes", "--timeout", "0.1"});
    EXPECT_THAT(program.nextErrorLine(), HasSubstr("watching"));
    write(folder / "no"); // told half a second later
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.error, "qkinfo: the time is over, and other things have changed\n");
}

TEST_F(ObserveProgram, EndsWhenNobodyReads) {
    Running program(workshop, {"observe", folder});
    EXPECT_THAT(program.nextErrorLine(), HasSubstr("watching"));
    program.closeOutput();
    write(folder / "a");
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.error, "");
}

TEST_F(RecentProgram, AHomeThatIsNoReadableFolderIsOneLineOfError) {
    for (const std::filesystem::path& none : {home / "none", home / "Documents/letter.txt"}) {
        for (const bool follows : {false, true}) {
            const Finished finished =
                workshop.run(follows ? std::vector<std::string>{"recent", "--follow", "--home", none}
                                     : std::vector<std::string>{"recent", "--home", none});
            EXPECT_EQ(finished.status, kFailure);
            EXPECT_EQ(finished.output, "");
            EXPECT_EQ(finished.error, "qkinfo: \"" + none.string() + "\" is no folder that can be read\n");
        }
    }
}

TEST_F(RecentProgram, ListsWhatIsInTheFoldersOfTheHome) {
    const Finished text = workshop.run({"recent", "--home", home});
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.error, "");
    EXPECT_THAT(text.output, StartsWith("Recent items\n  Last used "));
    EXPECT_THAT(text.output,
                HasSubstr("  file  rw-     " + std::filesystem::canonical(home).string() + "/Documents/letter.txt\n"));
    const json list = json::parse(workshop.run({"recent", "--json", "--home", home}).output)["recent"];
    EXPECT_THAT(pathsIn(list), testing::ElementsAre("letter.txt"));
}

TEST_F(RecentProgram, FollowingInJsonIsALineForEachChange) {
    Running program(workshop, {"recent", "--follow", "--json", "--home", home});
    EXPECT_THAT(pathsIn(json::parse(program.nextLine())["recent"]), testing::ElementsAre("letter.txt"));
    write(home / "Documents/poem\n.txt");
    EXPECT_THAT(pathsIn(json::parse(program.nextLine())["recent"]),
                testing::UnorderedElementsAre("letter.txt", "poem\n.txt"));
    program.send(SIGINT);
    EXPECT_EQ(program.finish().signal, SIGINT);
}

TEST_F(RecentProgram, FollowingInAPipeIsABlockForEachChange) {
    Running program(workshop, {"recent", "--follow", "--home", home});
    EXPECT_THAT(program.nextLine(), StartsWith("Recent items at "));
    EXPECT_THAT(program.nextLine(), StartsWith("  Last used "));
    EXPECT_THAT(program.nextLine(), EndsWith("/Documents/letter.txt"));
    EXPECT_EQ(program.nextLine(), "  1 item.");
    program.closeOutput();
    write(home / "Documents/poem.txt");
    EXPECT_EQ(program.finish().status, 0);
}

TEST_F(RecentProgram, OnATerminalTheListIsShownInPlaceAndStays) {
    workshop.setVariable("TERM=xterm");
    OnTerminal program(workshop, {"recent", "--follow", "--color=never", "--home", home});
    program.readUntil("letter.txt");
    EXPECT_FALSE(program.isInLineMode());
    write(home / "Documents/poem.txt");
    program.readUntil("poem.txt");
    program.type('q');
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    constexpr std::string_view kLeave = "\x1b[0m\x1b[?7h\x1b[?25h\x1b[?1049l";
    ASSERT_THAT(finished.output, HasSubstr(kLeave));
    const std::string rest = finished.output.substr(finished.output.find(kLeave) + kLeave.size());
    EXPECT_THAT(rest, StartsWith("Recent items\r\n"));
    EXPECT_THAT(rest, HasSubstr("...")); // of a path that is too long for 60 columns
    EXPECT_THAT(rest, EndsWith("  2 items.\r\n"));
    EXPECT_THAT(rest, Not(HasSubstr("\x1b")));
}

TEST_F(RecentProgram, LookingForItemsMovesAndLeavesNothingBehind) {
    workshop.setVariable("TERM=xterm");
    const Finished finished = OnTerminal(workshop, {"recent", "--color=never", "--home", home}).finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, StartsWith("\rLooking for recent items |"));
    EXPECT_THAT(finished.output, HasSubstr("\r\x1b[KRecent items\r\n  Last used "));
}

TEST_F(RecentProgram, AnInterruptGivesTheTerminalBack) {
    workshop.setVariable("TERM=xterm");
    OnTerminal program(workshop, {"recent", "--follow", "--home", home});
    program.readUntil("letter.txt");
    constexpr char kControlC = '\x03';
    program.type(kControlC);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.signal, SIGINT);
    EXPECT_THAT(finished.output, EndsWith("\x1b[?1049l"));
}

} // namespace qk::info
