// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/OnTerminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>

namespace qk::info {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::string_view kEnter = "\x1b[?2004h";
constexpr std::string_view kLeave = "\x1b[?2004l\r\n";
constexpr std::string_view kLeft = "\x1b[D";
constexpr std::string_view kShiftLeft = "\x1b[1;2D";

/// A workshop whose terminals understand sequences.
class TerminalWorkshop : public Workshop {
public:
    TerminalWorkshop() { setVariable("TERM=xterm"); }
};

/// How the field called `title` is drawn with `text` and the caret `caret` columns behind the title.
std::string line(const std::string& title, const std::string& text, std::size_t caret) {
    return "\r" + title + ": " + text + "\x1b[K\r\x1b[" + std::to_string(title.size() + 2 + caret) + "C";
}

std::string partner(const std::string& text, std::size_t caret) {
    return line("Partner ID", text, caret);
}

bool areEqual(const termios& left, const termios& right) {
    return left.c_iflag == right.c_iflag && left.c_oflag == right.c_oflag && left.c_cflag == right.c_cflag &&
           left.c_lflag == right.c_lflag && std::equal(left.c_cc, left.c_cc + NCCS, right.c_cc);
}

// An end by SIGQUIT leaves a file behind elsewhere.
void leaveNoCore() {
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
}

} // namespace

TEST(FieldOnATerminal, WithoutATerminalItIsAnError) {
    const TerminalWorkshop workshop;
    const auto noKeyboard = [] { dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO); };
    const Finished finished = OnTerminal(workshop, {"field", "tfa"}, noKeyboard).finish();
    EXPECT_EQ(finished.output, "qkinfo: standard input is no terminal to type at\r\n");
    EXPECT_EQ(finished.status, 2);
}

TEST(FieldOnATerminal, WithNothingToBeShownOnItIsAnError) {
    const TerminalWorkshop workshop;
    const auto noScreen = [] {
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        dup2(STDOUT_FILENO, STDERR_FILENO);
    };
    EXPECT_EQ(OnTerminal(workshop, {"field", "tfa"}, noScreen).finish().status, 2);
}

TEST(FieldOnATerminal, ADumbTerminalIsAnError) {
    Workshop workshop;
    workshop.setVariable("TERM=dumb");
    const Finished finished = OnTerminal(workshop, {"field", "tfa"}).finish();
    EXPECT_THAT(finished.output, StartsWith("qkinfo: the terminal cannot show a field"));
    EXPECT_EQ(finished.status, 2);
}

TEST(FieldOnATerminal, WhatIsTypedIsFormattedAndPrinted) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "partner-id"});
    program.readUntil(partner("", 0));
    EXPECT_FALSE(program.isInLineMode());
    program.type("1");
    program.readNext(partner("1", 1));
    program.type("23");
    program.readNext(partner("123", 3));
    program.type("4");
    program.readNext(partner("1 234", 5));
    program.type('\r');
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, StartsWith(std::string(kEnter)));
    EXPECT_THAT(finished.output, EndsWith("\rPartner ID: 1 234\x1b[K" + std::string(kLeave) + "1 234\r\n"));
    EXPECT_EQ(finished.status, 0);
}

TEST(FieldOnATerminal, ArrowsAndDeletionsEditInside) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "partner-id"});
    program.readUntil(partner("", 0));
    program.type("1234");
    program.readNext(partner("1 234", 5));
    program.type(kLeft);
    program.readNext(partner("1 234", 4));
    program.type('\x7f');
    program.readNext("\rPartner ID: 124\x1b[K");
    program.type('\x01');
    program.readNext(partner("124", 0));
    program.type("\x1b[3~");
    program.readNext(partner("24", 0));
    program.type('\x05');
    program.readNext(partner("24", 2));
    program.type(kShiftLeft);
    program.readNext(partner("2\x1b[7m4\x1b[27m", 1));
    program.type("9");
    program.readNext(partner("29", 2));
    program.type('\x15');
    program.readNext(partner("", 0));
    program.type('\x04');
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith(partner("", 0) + std::string(kLeave)));
}

TEST(FieldOnATerminal, APasteIsOneEdit) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "tfa"});
    const std::string title = "Two-factor code";
    program.readUntil(line(title, "", 0));
    program.type("\x1b[200~12a\x1b[201~");
    program.readNext("\a" + line(title, "", 0));
    program.type("\x1b[200~123");
    program.type("456\r\x1b[201~");
    program.readNext(line(title, "123456", 6));
    program.type("\r");
    EXPECT_THAT(program.finish().output, EndsWith("\r\n123456\r\n"));
}

TEST(FieldOnATerminal, ARefusedEditRingsTheBell) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "tfa"});
    program.readUntil(line("Two-factor code", "", 0));
    program.type("1");
    EXPECT_THAT(program.readNext(line("Two-factor code", "1", 1)), Not(HasSubstr("\a")));
    program.type("x");
    program.readNext("\a" + line("Two-factor code", "1", 1));
    program.type("\r");
    EXPECT_EQ(program.finish().status, 0);
}

TEST(FieldOnATerminal, CharactersOfSeveralBytesMayComeInPieces) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "id-or-name"});
    const std::string title = "Partner ID or computer";
    program.readUntil(line(title, "", 0));
    program.type("\xf0\x9f");
    program.type("\xa6\x8a\xc3");
    program.type("\xa9");
    program.readNext(line(title, "\U0001F98A\u00E9", 3));
    program.type("\x7f\x7f");
    program.readNext(line(title, "", 0));
    program.type("a\x1b[");
    program.type("Db\r");
    EXPECT_THAT(program.finish().output, EndsWith("\r\nba\r\n"));
}

TEST(FieldOnATerminal, AnotherSizeIsDrawnAtOnce) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "partner-id"});
    program.readUntil(partner("", 0));
    program.type("1234567890");
    program.readNext(partner("1 234 567 890", 13));
    program.resize(21, 24); // eight columns beside the title
    program.readNext("\x1b[1A\r\x1b[J" + partner(" 567 890", 8));
    program.type("\x01");
    program.readNext(partner("1 234 56", 0));
    program.resize(9, 24);
    program.readNext("\r1 234 56\x1b[K\r");
    program.type("\r");
    EXPECT_THAT(program.finish().output, EndsWith("\r\n1 234 567 890\r\n"));
}

TEST(FieldOnATerminal, TheTextGoesToStandardOutputAlone) {
    const TerminalWorkshop workshop;
    const std::string file = workshop.path("answer");
    const auto intoFile = [&] {
        dup2(open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR), STDOUT_FILENO);
    };
    OnTerminal program(workshop, {"field", "id-or-name"}, intoFile);
    program.readUntil(line("Partner ID or computer", "", 0));
    program.type("\x1b[200~a\tb\x1b[201~\r");
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, EndsWith("a\\x09b\x1b[K" + std::string(kLeave)));
    std::ostringstream answer;
    answer << std::ifstream(file).rdbuf();
    EXPECT_EQ(answer.str(), "a\tb\n");
}

TEST(FieldOnATerminal, ACountShowsItsLabelInTheEnd) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "count"});
    program.type("100");
    program.readUntil(line("Count", "100", 3));
    program.type('\n');
    EXPECT_THAT(program.finish().output, EndsWith("\rCount: 99+\x1b[K" + std::string(kLeave) + "99+\r\n"));
}

TEST(FieldOnATerminal, EscEndsItLikeAnInterrupt) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "partner-id"});
    program.readUntil(partner("", 0));
    program.type("1");
    program.readNext(partner("1", 1));
    program.type('\x1b');
    const Finished finished = program.finish();
    EXPECT_EQ(finished.signal, SIGINT);
    EXPECT_THAT(finished.output, EndsWith(kLeave));
}

TEST(FieldOnATerminal, SignalsGiveTheTerminalBack) {
    const TerminalWorkshop workshop;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        OnTerminal program(workshop, {"field", "partner-id"}, leaveNoCore);
        const termios before = program.mode();
        program.readUntil(partner("", 0));
        EXPECT_FALSE(areEqual(program.mode(), before));
        switch (signal) {
        case SIGINT: program.type('\x03'); break;
        case SIGQUIT: program.type('\x1c'); break;
        default: program.send(signal);
        }
        program.readNext(kLeave);
        EXPECT_EQ(program.finish().signal, signal);
    }
}

TEST(FieldOnATerminal, EveryEndGivesTheTerminalBack) {
    const TerminalWorkshop workshop;
    for (const char key : {'\r', '\x04', '\x03', '\x1b', '\x1c'}) {
        OnTerminal program(workshop, {"field", "partner-id"}, [] {
            leaveNoCore();
            std::signal(SIGHUP, SIG_IGN);
            // The program is a child of what tells how it left the terminal.
            termios before{};
            tcgetattr(STDIN_FILENO, &before);
            const pid_t child = fork();
            if (child == 0) {
                return;
            }
            std::signal(SIGINT, SIG_IGN);
            std::signal(SIGQUIT, SIG_IGN);
            Finished finished;
            waitForChild(child, finished);
            termios after{};
            tcgetattr(STDIN_FILENO, &after);
            _exit(areEqual(before, after) ? 0 : 1);
        });
        program.readUntil(partner("", 0));
        program.type(key);
        EXPECT_EQ(program.finish().status, 0) << static_cast<int>(key);
    }
}

TEST(FieldOnATerminal, AfterAStopItTakesTheTerminalAgain) {
    const TerminalWorkshop workshop;
    OnTerminal program(workshop, {"field", "partner-id"});
    program.readUntil(partner("", 0));
    program.type("12");
    program.readNext(partner("12", 2));
    program.send(SIGSTOP);
    program.send(SIGCONT);
    program.readNext(kEnter);
    program.readNext(partner("12", 2));
    EXPECT_FALSE(program.isInLineMode());
    program.type("3\r");
    EXPECT_THAT(program.finish().output, EndsWith("\r\n123\r\n"));
}

} // namespace qk::info
