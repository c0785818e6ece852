// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/InterruptSignals.h"
#include "tools/qkinfo/watch/Ticker.h"
#include "tools/qkinfo/watch/WatchLoop.h"
#include "tools/qkinfo/watch/WatchView.h"

#include <termios.h>

#include <optional>

namespace qk::info {

/// Frames in place on the terminal at standard output, on a screen of their own; the last one stays behind at the end.
/// "q" on a terminal at standard input ends it. The terminal is left as it was however the program ends, signals
/// included, and is given back while the program is stopped. Only one object at a time, in a process of one thread.
class TerminalConsole final : public WatchConsole {
public:
    /// `style` without its size, which is that of the terminal.
    TerminalConsole(std::chrono::milliseconds first, const WatchStyle& style);
    ~TerminalConsole() override;

    [[nodiscard]] WatchEvent next() override;
    [[nodiscard]] int show(const WatchHistory& history) override;
    [[nodiscard]] int showAgain(const WatchHistory& history) override;
    [[nodiscard]] int finish(const WatchHistory& history) override;

private:
    void enter();
    void leave();
    void leaveForGood();
    void handleSignal();
    [[nodiscard]] bool readsQuit();
    [[nodiscard]] WatchStyle currentStyle() const;

    Ticker ticker_;
    WatchStyle style_;
    InterruptSignals interrupts_;
    int signals_ = -1; // a descriptor for changes of size, for being stopped and for going on
    sigset_t previousMask_{};
    int keyboard_ = -1;
    std::optional<termios> previousMode_; // of the keyboard, while it is changed
    bool entered_ = false;
};

} // namespace qk::info
