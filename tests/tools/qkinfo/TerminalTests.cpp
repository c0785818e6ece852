// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/OnTerminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace qk::info {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// An update tool that ends when it is told to.
class HeldTool {
public:
    explicit HeldTool(Workshop& workshop) : gate_(workshop.path("gate")) {
        EXPECT_EQ(mkfifo(gate_.c_str(), 0600), 0);
        workshop.setUpdateTool("read word < '" + gate_.string() + "'; echo 'No new software available.'");
        workshop.setVariable("TERM=xterm");
    }

    void release() const {
        const int gate = open(gate_.c_str(), O_WRONLY | O_CLOEXEC);
        EXPECT_EQ(write(gate, "go\n", 3), 3);
        close(gate);
    }

private:
    std::filesystem::path gate_;
};

} // namespace

TEST(OnATerminal, TheReportIsColoredAndAsWideAsTheTerminal) {
    Workshop workshop;
    workshop.setVariable("TERM=xterm");
    const Finished finished = OnTerminal(workshop, {"report", "--no-updates", "--no-recent"}).finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, StartsWith("\x1b[1mOperating system\x1b[0m\r\n"));
    std::size_t columns = 0;
    for (std::size_t index = 0; index < finished.output.size(); ++index) {
        if (finished.output[index] == '\x1b') {
            index = finished.output.find('m', index);
        } else if (finished.output[index] == '\r') {
            EXPECT_LE(columns, OnTerminal::kColumns);
            columns = 0;
        } else {
            ++columns;
        }
    }
}

TEST(OnATerminal, ThereIsNoColorWhereItIsNotWanted) {
    for (const std::string variable : {"NO_COLOR=1", "TERM=dumb", "TERM="}) {
        Workshop workshop;
        workshop.setVariable("TERM=xterm");
        workshop.setVariable(variable);
        const Finished finished = OnTerminal(workshop, {"os"}).finish();
        EXPECT_THAT(finished.output, StartsWith("Operating system\r\n")) << variable;
        EXPECT_THAT(finished.output, Not(HasSubstr("\x1b"))) << variable;
    }
}

TEST(OnATerminal, WaitingForUpdatesMovesAndLeavesNothingBehind) {
    Workshop workshop;
    const HeldTool tool(workshop);
    OnTerminal program(workshop, {"updates", "--color=never"});
    program.readUntil("Asking for updates /");
    tool.release();
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, StartsWith("\rAsking for updates |\rAsking for updates /"));
    EXPECT_THAT(finished.output, EndsWith("\r\x1b[KUpdates\r\n  Up to date.\r\n"));
}

TEST(OnATerminal, TheMovingLineIsOnStandardErrorAlone) {
    Workshop workshop;
    const HeldTool tool(workshop);
    const std::string answer = workshop.path("answer");
    OnTerminal program(workshop, {"updates"},
                       [&] { dup2(open(answer.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDOUT_FILENO); });
    program.readUntil("Asking for updates /");
    tool.release();
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, EndsWith("\r\x1b[K"));
    EXPECT_EQ(std::filesystem::file_size(answer), std::string("Updates\n  Up to date.\n").size());
}

TEST(OnATerminal, ThereIsNoMovingLineWhenStandardErrorIsElsewhere) {
    Workshop workshop;
    workshop.setVariable("TERM=xterm");
    const auto discardErrors = [] { dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO); };
    const Finished finished = OnTerminal(workshop, {"updates", "--color=never"}, discardErrors).finish();
    EXPECT_EQ(finished.output, "Updates\r\n  Up to date.\r\n");
}

TEST(OnATerminal, ThereIsNoMovingLineOnADumbOne) {
    Workshop workshop;
    workshop.setVariable("TERM=dumb");
    const Finished finished = OnTerminal(workshop, {"updates"}).finish();
    EXPECT_EQ(finished.output, "Updates\r\n  Up to date.\r\n");
}

TEST(OnATerminal, InterruptEndsTheProgramAtOnceWithTheLineCleared) {
    Workshop workshop;
    const HeldTool tool(workshop);
    OnTerminal program(workshop, {"updates"});
    program.readUntil("Asking for updates /");
    constexpr char kControlC = '\x03';
    program.type(kControlC);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.signal, SIGINT);
    EXPECT_THAT(finished.output, EndsWith("\r\x1b[K"));
    EXPECT_THAT(finished.output, Not(HasSubstr("Updates\r\n")));
}

} // namespace qk::info
