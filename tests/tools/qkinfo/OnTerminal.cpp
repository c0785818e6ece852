// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/OnTerminal.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

namespace qk::info {

OnTerminal::OnTerminal(const Workshop& workshop, const std::vector<std::string>& arguments,
                       const std::function<void()>& prepareChild) {
    winsize size{};
    size.ws_row = kLines;
    size.ws_col = kColumns;
    child_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (child_ == 0) {
        prepareChild();
        workshop.become(arguments);
    }
}

OnTerminal::~OnTerminal() {
    close(terminal_);
}

bool OnTerminal::readOne() {
    char character = 0;
    if (read(terminal_, &character, 1) != 1) {
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
    const termios now = mode();
    return (now.c_lflag & ICANON) != 0 && (now.c_lflag & ECHO) != 0;
}

termios OnTerminal::mode() const {
    termios mode{};
    EXPECT_EQ(tcgetattr(terminal_, &mode), 0);
    return mode;
}

Finished OnTerminal::finish() {
    while (readOne()) {
    }
    Finished finished;
    waitForChild(child_, finished);
    finished.output = shown_;
    return finished;
}

} // namespace qk::info
