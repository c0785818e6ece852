// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/OnTerminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

namespace qk::info {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::string_view kEnter = "\x1b[?1049h\x1b[?25l";
constexpr std::string_view kLeave = "\x1b[0m\x1b[?25h\x1b[?1049l";
constexpr std::string_view kFrame = "\x1b[H"; // what every frame begins with
constexpr char kControlC = '\x03';
constexpr char kControlZ = '\x1a';

/// A workshop whose terminals understand sequences and UTF-8.
class TerminalWorkshop : public Workshop {
public:
    TerminalWorkshop() {
        setVariable("TERM=xterm");
        setVariable("LC_ALL=C.UTF-8");
    }
};

std::size_t occurrences(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t found = text.find(part); found != std::string_view::npos; found = text.find(part, found + 1)) {
        ++count;
    }
    return count;
}

/// The columns of the widest line, of one byte a column, without escape sequences.
std::size_t widestLine(const std::string& text) {
    std::size_t widest = 0;
    std::size_t columns = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\x1b') {
            index = text.find_first_of("HJKhlm", index);
        } else if (text[index] == '\r' || text[index] == '\n') {
            columns = 0;
        } else {
            widest = std::max(widest, ++columns);
        }
    }
    return widest;
}

/// Prints `state` of a child and how the terminal is.
void say(std::string_view state) {
    termios mode{};
    tcgetattr(STDIN_FILENO, &mode);
    const bool lines = (mode.c_lflag & ICANON) != 0 && (mode.c_lflag & ECHO) != 0;
    const std::string text = std::string(state) + (lines ? ", in line mode" : ", not in line mode");
    static_cast<void>(!write(STDOUT_FILENO, text.data(), text.size()));
}

/// Goes on in a child with a process group of its own, as a shell's jobs have, which may be stopped. The parent lets it
/// go on.
void actAsShell() {
    std::array<int, 2> gate{};
    static_cast<void>(!pipe2(gate.data(), O_CLOEXEC));
    const pid_t job = fork();
    if (job == 0) {
        char isInForeground = 0;
        static_cast<void>(!read(gate[0], &isInForeground, 1));
        return;
    }
    setpgid(job, job);
    tcsetpgrp(STDIN_FILENO, job);
    std::signal(SIGTTOU, SIG_IGN);
    static_cast<void>(!write(gate[1], "", 1));
    int status = 0;
    while (waitpid(job, &status, WUNTRACED) == job && WIFSTOPPED(status)) {
        say("stopped");
        kill(job, SIGCONT);
    }
    say("ended");
    _exit(0);
}

} // namespace

TEST(WatchOnATerminal, FramesAppearInPlaceAndTheLastOneStays) {
    const TerminalWorkshop workshop;
    const Finished finished = OnTerminal(workshop, {"watch", "--interval=0.1", "--count=3", "--color=never"}).finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, StartsWith(std::string(kEnter)));
    EXPECT_EQ(occurrences(finished.output, kFrame), 3U);
    EXPECT_EQ(occurrences(finished.output, kLeave), 1U);
    const std::size_t left = finished.output.find(kLeave);
    EXPECT_LT(finished.output.rfind(kFrame), left);
    const std::string rest = finished.output.substr(left + kLeave.size());
    EXPECT_THAT(rest, Not(HasSubstr("\x1b")));
    EXPECT_THAT(rest, HasSubstr("\r\nCPU "));
    EXPECT_THAT(rest, HasSubstr("\r\nMemory "));
    EXPECT_THAT(rest, HasSubstr("█"));
    EXPECT_THAT(rest, EndsWith("\r\n"));
}

TEST(WatchOnATerminal, ColorIsUsedAsInTheReport) {
    const TerminalWorkshop workshop;
    EXPECT_THAT(OnTerminal(workshop, {"watch", "--count=1", "--interval=0.1"}).finish().output,
                HasSubstr("\x1b[36mMemory\x1b[0m"));
}

TEST(WatchOnATerminal, AnotherSizeIsDrawnAtOnce) {
    TerminalWorkshop workshop;
    workshop.setVariable("LC_ALL=C"); // a byte a column
    OnTerminal program(workshop, {"watch", "--interval=3600", "--color=never"});
    program.readUntil("\x1b[J"); // the last line of the first frame, a quarter of a second after the start
    program.resize(20, 5);
    program.readNext(kFrame);
    EXPECT_LE(widestLine(program.readNext("\x1b[J")), 20U);
    program.type('q');
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(occurrences(finished.output.substr(finished.output.find(kLeave)), "\r\n"), 5U);
}

TEST(WatchOnATerminal, TheLetterQEndsItAndIsNotShown) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"watch", "--interval=3600", "--color=never"});
    program.readUntil(kFrame);
    EXPECT_FALSE(program.isInLineMode());
    program.type('x');
    program.type('q');
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(occurrences(finished.output, kFrame), 1U);
    EXPECT_THAT(finished.output, HasSubstr(kLeave));
    EXPECT_THAT(finished.output.substr(finished.output.find(kLeave)), Not(HasSubstr("xq")));
}

TEST(WatchOnATerminal, TheLetterQEndsItBeforeTheFirstFrame) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"watch", "--interval=3600"});
    program.type('q');
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith(kLeave));
}

TEST(WatchOnATerminal, InterruptGivesTheTerminalBack) {
    const TerminalWorkshop workshop;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        OnTerminal program(workshop, {"watch", "--interval=0.1"});
        program.readUntil(kFrame);
        if (signal == SIGINT) {
            program.type(kControlC);
        } else {
            program.send(signal);
        }
        const Finished finished = program.finish();
        EXPECT_EQ(finished.signal, signal);
        EXPECT_THAT(finished.output, EndsWith(kLeave));
        EXPECT_EQ(occurrences(finished.output, kLeave), 1U);
    }
}

TEST(WatchOnATerminal, StoppedItGivesTheTerminalBack) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"watch", "--interval=3600"}, actAsShell);
    program.readUntil(kFrame);
    program.type(kControlZ);
    program.readNext("stopped, in line mode");
    program.readNext(kEnter);
    program.readNext(kFrame);
    program.type('q');
    EXPECT_THAT(program.finish().output, EndsWith("ended, in line mode"));
}

TEST(WatchOnATerminal, StoppedWithoutAWordItTakesTheTerminalAgain) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"watch", "--interval=3600"});
    program.readUntil(kFrame);
    program.send(SIGSTOP);
    program.send(SIGCONT);
    program.readNext(kEnter);
    program.readNext(kFrame);
    EXPECT_FALSE(program.isInLineMode());
    program.type('q');
    EXPECT_EQ(program.finish().status, 0);
}

TEST(WatchOnATerminal, StandardInputFromElsewhereIsLeftAlone) {
    const TerminalWorkshop workshop;
    const auto noKeyboard = [] { dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO); };
    OnTerminal program(workshop, {"watch", "--interval=0.1", "--count=2"}, noKeyboard);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(occurrences(finished.output, kFrame), 2U);
}

TEST(WatchOnATerminal, ADumbOneGetsLines) {
    Workshop workshop;
    workshop.setVariable("TERM=dumb");
    const Finished finished = OnTerminal(workshop, {"watch", "--interval=0.1", "--count=2"}).finish();
    EXPECT_THAT(finished.output, Not(HasSubstr("\x1b")));
    EXPECT_EQ(occurrences(finished.output, " inactive\r\n"), 2U);
}

} // namespace qk::info
