// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Running.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace qk::info {

namespace {

constexpr int kLimit = 60'000; // milliseconds

/// Whether there is a byte.
bool readByte(int end, char& byte) {
    pollfd waiting{end, POLLIN, 0};
    if (poll(&waiting, 1, kLimit) != 1) {
        ADD_FAILURE() << "the program says nothing";
        return false;
    }
    return read(end, &byte, 1) == 1;
}

std::string restOf(int end) {
    std::string text;
    for (char byte = 0; end != -1 && readByte(end, byte);) {
        text += byte;
    }
    return text;
}

} // namespace

Running::Running(const Workshop& workshop, const std::vector<std::string>& arguments) {
    std::array<int, 2> output{};
    std::array<int, 2> error{};
    EXPECT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(error.data(), O_CLOEXEC), 0);
    child_ = fork();
    if (child_ == 0) {
        dup2(output[1], STDOUT_FILENO);
        dup2(error[1], STDERR_FILENO);
        workshop.become(arguments);
    }
    close(output[1]);
    close(error[1]);
    output_ = output[0];
    error_ = error[0];
}

Running::~Running() {
    if (child_ != -1) {
        send(SIGKILL);
        Finished finished;
        waitForChild(child_, finished);
    }
    closeOutput();
    close(error_);
}

std::string Running::lineFrom(int end) {
    std::string line;
    for (char byte = 0; readByte(end, byte) && byte != '\n';) {
        line += byte;
    }
    return line;
}

void Running::send(int signal) const {
    EXPECT_EQ(kill(child_, signal), 0);
}

void Running::closeOutput() {
    if (output_ != -1) {
        close(std::exchange(output_, -1));
    }
}

Finished Running::finish() {
    Finished finished;
    finished.output = restOf(output_);
    finished.error = restOf(error_);
    waitForChild(std::exchange(child_, -1), finished);
    return finished;
}

} // namespace qk::info
