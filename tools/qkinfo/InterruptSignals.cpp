// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/InterruptSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace qk::info {

namespace {

// What the handler may touch: the ends of a pipe, for reading and for writing.
std::array<int, 2> signalPipe{-1, -1};

extern "C" void passOn(int signal) {
    const int error = errno;
    const auto byte = static_cast<unsigned char>(signal);
    const ssize_t written = write(signalPipe[1], &byte, 1);
    static_cast<void>(written);
    errno = error;
}

// A child that shares our terminal got its own Ctrl-C; one after `kill` did not.
void terminateChildren() {
    std::error_code error;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task", error)) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;) {
            kill(child, SIGTERM);
        }
    }
}

} // namespace

InterruptSignals::InterruptSignals() {
    if (pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) == -1) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    struct sigaction action {};
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART;
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        sigaction(kSignals[index], nullptr, &previous_[index]);
        if (previous_[index].sa_handler != SIG_IGN) {
            sigaction(kSignals[index], &action, nullptr);
        }
    }
}

InterruptSignals::~InterruptSignals() {
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        sigaction(kSignals[index], &previous_[index], nullptr);
    }
    for (int& end : signalPipe) {
        close(end);
        end = -1;
    }
}

int InterruptSignals::fd() const {
    return signalPipe[0];
}

void InterruptSignals::dieOfReceived() const {
    unsigned char signal = SIGINT;
    const ssize_t length = read(signalPipe[0], &signal, 1);
    static_cast<void>(length);
    terminateChildren();
    std::signal(signal, SIG_DFL);
    raise(signal);
    // Not reached unless the signal is blocked.
    constexpr int kStatusOfSignals = 128;
    _exit(kStatusOfSignals + signal);
}

} // namespace qk::info
