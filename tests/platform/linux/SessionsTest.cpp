// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Sessions.h"

#include "QKFoundation/platform/linux/parse/UserDirectories.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::platform::parse {
namespace {

using namespace std::string_view_literals;

TEST(ActiveSession, SeatWithoutAUserHasNone) {
    for (const std::string_view seat :
         {""sv, "IS_SEAT0=1\nCAN_GRAPHICAL=0\n"sv, "ACTIVE=c1\n"sv, "ACTIVE_UID=\n"sv, "ACTIVE_UID=anna\n"sv,
          "ACTIVE_UID=-1\n"sv, "ACTIVE_UID=4294967296\n"sv, "#ACTIVE_UID=1\n"sv}) {
        EXPECT_FALSE(activeSession(seat).has_value()) << seat;
    }
}

TEST(ActiveSession, IsThatInFrontOfTheSeat) {
    const auto session = activeSession("# This is private data. Do not parse.\nIS_SEAT0=1\nCAN_TTY=1\nACTIVE=c2\n"
                                       "ACTIVE_UID=1000\nSESSIONS=c2 4\nUIDS=1000 1001\n");
    ASSERT_TRUE(session.has_value());
    EXPECT_EQ(session->id, "c2");
    EXPECT_EQ(session->uid, 1000U);
}

TEST(ActiveSession, RootIsAUserToo) {
    EXPECT_EQ(activeSession("ACTIVE_UID=0\n")->uid, 0U);
}

TEST(ActiveSession, IDThatIsNoFilesNameIsNotFollowed) {
    for (const std::string_view id : {"../../etc/passwd"sv, "a/b"sv, "."sv, ".."sv, "a b"sv, ""sv}) {
        EXPECT_EQ(activeSession("ACTIVE=\"" + std::string(id) + "\"\nACTIVE_UID=1\n")->id, "") << id;
    }
}

TEST(IsOfUser, ClassDecides) {
    EXPECT_TRUE(isOfUser(""));
    EXPECT_TRUE(isOfUser("UID=1000\nUSER=anna\n"));
    for (const std::string kind : {"user", "user-early", "user-light"}) {
        EXPECT_TRUE(isOfUser("CLASS=" + kind + "\n")) << kind;
    }
    for (const std::string kind : {"greeter", "lock-screen", "background", "manager", "users", ""}) {
        EXPECT_FALSE(isOfUser("CLASS=" + kind + "\n")) << kind;
    }
}

TEST(UserName, IsThatOfTheFile) {
    EXPECT_EQ(userName(""), std::nullopt);
    EXPECT_EQ(userName("NAME=\n"), std::nullopt);
    EXPECT_EQ(userName("NAME=anna\nSTATE=active\n"), "anna");
}

TEST(ActiveTerminal, IsATerminalOfTheConsole) {
    EXPECT_EQ(activeTerminal("tty1\n"), "tty1");
    EXPECT_EQ(activeTerminal("tty63"), "tty63");
    for (const std::string_view text : {""sv, "\n"sv, "tty"sv, "ttyS0"sv, "tty1x"sv, "../tty1"sv, "tty1\ntty2"sv}) {
        EXPECT_EQ(activeTerminal(text), std::nullopt) << text;
    }
}

TEST(UserDirectory, WithoutALineThereIsNone) {
    EXPECT_EQ(userDirectory("", "XDG_DOWNLOAD_DIR", "/home/anna"), std::nullopt);
    EXPECT_EQ(userDirectory("# XDG_DOWNLOAD_DIR=\"$HOME/x\"\nXDG_DESKTOP_DIR=\"$HOME/y\"\n", "XDG_DOWNLOAD_DIR",
                            "/home/anna"),
              std::nullopt);
}

TEST(UserDirectory, IsAbsoluteOrBelowTheHomeFolder) {
    const struct {
        std::string_view value;
        std::optional<std::string> path;
    } rows[] = {
        {"\"$HOME/Downloads\"", "/home/anna/Downloads"},
        {"\"$HOME/Ge\\\"laden\"", "/home/anna/Ge\"laden"},
        {"\"$HOME/Gel\u00e4den und mehr/\"", "/home/anna/Gel\u00e4den und mehr"},
        {"\"$HOME/\"", "/home/anna"},
        {"\"$HOME\"", "/home/anna"},
        {"\"/srv/fetched//\"", "/srv/fetched"},
        {"/srv/fetched", "/srv/fetched"},
        {"\"/\"", "/"},
        {"\"\"", std::nullopt},
        {"\"Downloads\"", std::nullopt},
        {"\"$HOMEX/Downloads\"", std::nullopt},
        {"\"${HOME}/Downloads\"", std::nullopt},
        {"\"~/Downloads\"", std::nullopt},
        {"\"$HOME/Downloads", std::nullopt},
    };
    for (const auto& row : rows) {
        const std::string text = "XDG_DOWNLOAD_DIR=" + std::string(row.value) + "\n";
        EXPECT_EQ(userDirectory(text, "XDG_DOWNLOAD_DIR", "/home/anna"), row.path) << text;
    }
}

TEST(UserDirectory, RootAsTheHomeFolderMakesNoDoubleSlash) {
    EXPECT_EQ(userDirectory("XDG_DOWNLOAD_DIR=\"$HOME/d\"\n", "XDG_DOWNLOAD_DIR", "/"), "/d");
    EXPECT_EQ(userDirectory("XDG_DOWNLOAD_DIR=\"$HOME\"\n", "XDG_DOWNLOAD_DIR", "/"), "/");
}

TEST(UserDirectory, LastLineCounts) {
    EXPECT_EQ(userDirectory("A_DIR=/x\nA_DIR=/y\n", "A_DIR", "/"), "/y");
}

} // namespace
} // namespace qk::platform::parse
