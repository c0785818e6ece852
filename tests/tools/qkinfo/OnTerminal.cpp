// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/OnTerminal.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace qk::info {

namespace {

// Written to the terminal behind all that the program wrote.
constexpr std::string_view kEnd = "\x1b_end\x1b\\";

template <typename Number>
void tell(int socket, Number number) {
    static_cast<void>(!write(socket, &number, sizeof number));
}

template <typename Number>
Number hear(int socket) {
    Number number{};
    EXPECT_EQ(read(socket, &number, sizeof number), static_cast<ssize_t>(sizeof number));
    return number;
}

// Starts the program by `become`, tells who it is and how it ended, and stays until it is told to go.
void start(int socket, const std::function<void()>& become) {
    constexpr std::array kOfTheProgram{SIGINT, SIGQUIT, SIGTSTP, SIGHUP};
    for (const int signal : kOfTheProgram) {
        std::signal(signal, SIG_IGN);
    }
    const pid_t child = fork();
    if (child == 0) {
        for (const int signal : kOfTheProgram) {
            std::signal(signal, SIG_DFL);
        }
        become();
    }
    tell(socket, child);
    Finished finished;
    waitForChild(child, finished);
    static_cast<void>(!write(STDOUT_FILENO, kEnd.data(), kEnd.size()));
    tell(socket, finished.status);
    tell(socket, finished.signal);
    char go = 0;
    static_cast<void>(!read(socket, &go, 1));
    _exit(0);
}

} // namespace

OnTerminal::OnTerminal(const Workshop& workshop, const std::vector<std::string>& arguments,
                       const std::function<void()>& prepareChild) {
    winsize size{};
    size.ws_row = kLines;
    size.ws_col = kColumns;
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    starterChild_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (starterChild_ == 0) {
        close(ends[0]);
        start(ends[1], [&] {
            prepareChild();
            workshop.become(arguments);
        });
    }
    close(ends[1]);
    starter_ = ends[0];
    child_ = hear<pid_t>(starter_);
}

OnTerminal::~OnTerminal() {
    close(starter_);
    close(terminal_);
}

bool OnTerminal::readOne() {
    char character = 0;
    if (shown_.ends_with(kEnd) || read(terminal_, &character, 1) != 1) {
        return false;
    }
    shown_ += character;
    return true;
}

void OnTerminal::readUntil(std::string_view text) {
    while (shown_.find(text) == std::string::npos && readOne()) {
    }
}

std::string OnTerminal::readNext(std::string_view text) {
    const std::size_t start = shown_.size();
    while (shown_.find(text, start) == std::string::npos && readOne()) {
    }
    EXPECT_NE(shown_.find(text, start), std::string::npos) << text;
    return shown_.substr(start);
}

void OnTerminal::type(char key) const {
    type({&key, 1});
}

void OnTerminal::type(std::string_view keys) const {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

void OnTerminal::resize(unsigned short columns, unsigned short lines) const {
    winsize size{};
    size.ws_row = lines;
    size.ws_col = columns;
    EXPECT_EQ(ioctl(terminal_, TIOCSWINSZ, &size), 0);
}

void OnTerminal::send(int signal) const {
    EXPECT_EQ(kill(child_, signal), 0);
}

bool OnTerminal::isInLineMode() const {
    termios mode{};
    EXPECT_EQ(tcgetattr(terminal_, &mode), 0);
    return (mode.c_lflag & ICANON) != 0 && (mode.c_lflag & ECHO) != 0;
}

Finished OnTerminal::finish() {
    readUntil(kEnd);
    Finished finished;
    finished.status = hear<int>(starter_);
    finished.signal = hear<int>(starter_);
    finished.output = shown_.substr(0, shown_.find(kEnd));
    tell(starter_, '\0');
    Finished starter;
    waitForChild(starterChild_, starter);
    return finished;
}

} // namespace qk::info
