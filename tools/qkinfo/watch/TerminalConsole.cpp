// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/TerminalConsole.h"

#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/Terminal.h"

#include <unistd.h>

namespace qk::info {

namespace {

// Another screen, without a cursor; and back, with plain characters and the cursor.
constexpr std::string_view kEnter = "\x1b[?1049h\x1b[?25l\x1b[2J";
constexpr std::string_view kLeave = "\x1b[0m\x1b[?25h\x1b[?1049l";

} // namespace

TerminalConsole::TerminalConsole(std::chrono::milliseconds first, const WatchStyle& style)
    : ticker_(first, style.interval), style_(style), session_({STDOUT_FILENO, kEnter, kLeave}) {}

WatchEvent TerminalConsole::next() {
    for (;;) {
        switch (session_.wait(ticker_.fd())) {
        case TerminalEvent::Keys:
            if (session_.readKeys().find('q') != std::string::npos) {
                return WatchEvent::Quit;
            }
            break;
        case TerminalEvent::Redraw: return WatchEvent::Redraw;
        case TerminalEvent::Other: ticker_.take(); return WatchEvent::Sample;
        case TerminalEvent::Timeout: break;
        }
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
    session_.forgetKeys();
    session_.leave();
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
