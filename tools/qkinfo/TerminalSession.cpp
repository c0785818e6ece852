// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/TerminalSession.h"

#include "tools/qkinfo/Output.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace qk::info {

namespace {

constexpr std::size_t kMostKeys = 4096; // bytes at once

sigset_t setOf(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals) {
        sigaddset(&set, signal);
    }
    return set;
}

} // namespace

TerminalSession::TerminalSession(const TerminalManners& manners) : manners_(manners) {
    const sigset_t watched = setOf({SIGWINCH, SIGTSTP, SIGCONT});
    signals_ = signalfd(-1, &watched, SFD_CLOEXEC);
    if (signals_ == -1) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
    sigprocmask(SIG_BLOCK, &watched, &previousMask_);
    keyboard_ = isatty(STDIN_FILENO) == 1 ? STDIN_FILENO : -1;
    enter();
}

TerminalSession::~TerminalSession() {
    leave();
    sigprocmask(SIG_SETMASK, &previousMask_, nullptr);
    close(signals_);
}

void TerminalSession::enter() {
    termios mode{};
    if (keyboard_ != -1 && tcgetattr(keyboard_, &mode) == 0) {
        // Where we were stopped without a word, the mode of before our beginning is still the one to go back to.
        previousMode_ = previousMode_.value_or(mode);
        mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        if (manners_.everyKey) {
            mode.c_lflag &= ~static_cast<tcflag_t>(IEXTEN);
            mode.c_iflag &= ~static_cast<tcflag_t>(IXON | ISTRIP);
        }
        mode.c_cc[VMIN] = 1;
        mode.c_cc[VTIME] = 0;
        tcsetattr(keyboard_, TCSANOW, &mode);
    }
    entered_ = true;
    // Should the terminal be gone, the first frame says so.
    static_cast<void>(writeAll(manners_.output, manners_.enter));
}

void TerminalSession::leave() {
    if (!entered_) {
        return;
    }
    entered_ = false;
    static_cast<void>(writeAll(manners_.output, manners_.leave));
    if (previousMode_.has_value()) {
        tcsetattr(keyboard_ != -1 ? keyboard_ : STDIN_FILENO, TCSANOW, &*previousMode_);
        previousMode_.reset();
    }
}

void TerminalSession::forgetKeys() const {
    if (keyboard_ != -1) {
        tcflush(keyboard_, TCIFLUSH);
    }
}

void TerminalSession::interrupt() {
    // Keys that nobody read were not meant for what reads the terminal next.
    forgetKeys();
    leave();
    interrupts_.dieOfReceived();
}

TerminalEvent TerminalSession::wait(int other, std::optional<std::chrono::milliseconds> timeout) {
    for (;;) {
        std::array<pollfd, 4> waiting{pollfd{interrupts_.fd(), POLLIN, 0}, pollfd{signals_, POLLIN, 0},
                                      pollfd{other, POLLIN, 0}, pollfd{keyboard_, POLLIN, 0}};
        const int ready =
            poll(waiting.data(), waiting.size(), timeout.has_value() ? static_cast<int>(timeout->count()) : -1);
        if (ready == -1) {
            continue;
        }
        if (waiting[0].revents != 0) {
            interrupt();
        }
        if (waiting[1].revents != 0) {
            handleSignal();
            return TerminalEvent::Redraw;
        }
        if (waiting[2].revents != 0) {
            return TerminalEvent::Other;
        }
        return ready == 0 ? TerminalEvent::Timeout : TerminalEvent::Keys;
    }
}

std::string TerminalSession::readKeys() {
    std::string keys(kMostKeys, '\0');
    const ssize_t count = read(keyboard_, keys.data(), keys.size());
    if (count <= 0) {
        keyboard_ = count == -1 && (errno == EINTR || errno == EAGAIN) ? keyboard_ : -1;
        return {};
    }
    keys.resize(static_cast<std::size_t>(count));
    return keys;
}

void TerminalSession::handleSignal() {
    signalfd_siginfo info{};
    if (read(signals_, &info, sizeof info) != sizeof info) {
        return;
    }
    if (info.ssi_signo == SIGTSTP) {
        leave();
        // Stops here, as it would have without us, and goes on here.
        const sigset_t stop = setOf({SIGTSTP});
        raise(SIGTSTP);
        sigprocmask(SIG_UNBLOCK, &stop, nullptr);
        sigprocmask(SIG_BLOCK, &stop, nullptr);
        const sigset_t goOn = setOf({SIGCONT});
        const timespec atOnce{};
        sigtimedwait(&goOn, nullptr, &atOnce);
        enter();
    } else if (info.ssi_signo == SIGCONT) {
        // Whoever had the terminal meanwhile may have changed it.
        enter();
    }
}

} // namespace qk::info
