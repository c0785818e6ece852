// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/TerminalConsole.h"

#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/Terminal.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace qk::info {

namespace {

// Another screen, without a cursor; and back, with plain characters and the cursor.
constexpr std::string_view kEnter = "\x1b[?1049h\x1b[?25l\x1b[2J";
constexpr std::string_view kLeave = "\x1b[0m\x1b[?25h\x1b[?1049l";

sigset_t setOf(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals) {
        sigaddset(&set, signal);
    }
    return set;
}

} // namespace

TerminalConsole::TerminalConsole(std::chrono::milliseconds first, const WatchStyle& style)
    : ticker_(first, style.interval), style_(style) {
    const sigset_t watched = setOf({SIGWINCH, SIGTSTP, SIGCONT});
    signals_ = signalfd(-1, &watched, SFD_CLOEXEC);
    if (signals_ == -1) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
    sigprocmask(SIG_BLOCK, &watched, &previousMask_);
    keyboard_ = isatty(STDIN_FILENO) == 1 ? STDIN_FILENO : -1;
    enter();
}

TerminalConsole::~TerminalConsole() {
    leave();
    sigprocmask(SIG_SETMASK, &previousMask_, nullptr);
    close(signals_);
}

void TerminalConsole::enter() {
    termios mode{};
    if (keyboard_ != -1 && tcgetattr(keyboard_, &mode) == 0) {
        // Where we were stopped without a word, the mode of before our beginning is still the one to go back to.
        previousMode_ = previousMode_.value_or(mode);
        mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        mode.c_cc[VMIN] = 1;
        mode.c_cc[VTIME] = 0;
        tcsetattr(keyboard_, TCSANOW, &mode);
    }
    entered_ = true;
    // Should the terminal be gone, the first frame says so.
    static_cast<void>(writeAll(STDOUT_FILENO, kEnter));
}

void TerminalConsole::leave() {
    if (!entered_) {
        return;
    }
    entered_ = false;
    static_cast<void>(writeAll(STDOUT_FILENO, kLeave));
    if (previousMode_.has_value()) {
        tcsetattr(keyboard_, TCSANOW, &*previousMode_);
        previousMode_.reset();
    }
}

void TerminalConsole::leaveForGood() {
    // Keys that nobody read were not meant for what reads the terminal next.
    if (keyboard_ != -1) {
        tcflush(keyboard_, TCIFLUSH);
    }
    leave();
}

WatchEvent TerminalConsole::next() {
    for (;;) {
        std::array<pollfd, 4> waiting{pollfd{interrupts_.fd(), POLLIN, 0}, pollfd{keyboard_, POLLIN, 0},
                                      pollfd{signals_, POLLIN, 0}, pollfd{ticker_.fd(), POLLIN, 0}};
        if (poll(waiting.data(), waiting.size(), -1) == -1) {
            continue;
        }
        if (waiting[0].revents != 0) {
            leaveForGood();
            interrupts_.dieOfReceived();
        }
        if (waiting[1].revents != 0 && readsQuit()) {
            return WatchEvent::Quit;
        }
        if (waiting[2].revents != 0) {
            handleSignal();
            return WatchEvent::Redraw;
        }
        if (waiting[3].revents != 0) {
            ticker_.take();
            return WatchEvent::Sample;
        }
    }
}

bool TerminalConsole::readsQuit() {
    std::array<char, 64> keys{};
    const ssize_t count = read(keyboard_, keys.data(), keys.size());
    if (count <= 0) {
        keyboard_ = count == -1 && (errno == EINTR || errno == EAGAIN) ? keyboard_ : -1;
        return false;
    }
    return std::string_view(keys.data(), static_cast<std::size_t>(count)).find('q') != std::string_view::npos;
}

void TerminalConsole::handleSignal() {
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

WatchStyle TerminalConsole::currentStyle() const {
    const Terminal terminal = terminalAt(STDOUT_FILENO);
    WatchStyle style = style_;
    style.width = terminal.width;
    style.height = terminal.height;
    return style;
}

int TerminalConsole::show(const WatchHistory& history) {
    return writeAll(STDOUT_FILENO, drawnInPlace(watchFrame(history, currentStyle())));
}

int TerminalConsole::showAgain(const WatchHistory& history) {
    return show(history);
}

int TerminalConsole::finish(const WatchHistory& history) {
    leaveForGood();
    if (history.isEmpty()) {
        return 0;
    }
    std::string text;
    for (const std::string& line : watchFrame(history, currentStyle())) {
        text.append(line).append("\n");
    }
    return writeAll(STDOUT_FILENO, text);
}

} // namespace qk::info
