// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/TerminalSession.h"
#include "tools/qkinfo/watch/Ticker.h"
#include "tools/qkinfo/watch/WatchLoop.h"
#include "tools/qkinfo/watch/WatchView.h"

namespace qk::info {

/// Frames in place on the terminal at standard output, on a screen of their own; the last one stays behind at the end.
/// "q" on a terminal at standard input ends it. The terminal is left as it was however the program ends, signals
/// included, and is given back while the program is stopped. Only one object at a time, in a process of one thread.
class TerminalConsole final : public WatchConsole {
public:
    /// `style` without its size, which is that of the terminal.
    TerminalConsole(std::chrono::milliseconds first, const WatchStyle& style);

    [[nodiscard]] WatchEvent next() override;
    [[nodiscard]] int show(const WatchHistory& history) override;
    [[nodiscard]] int showAgain(const WatchHistory& history) override;
    [[nodiscard]] int finish(const WatchHistory& history) override;

private:
    [[nodiscard]] WatchStyle currentStyle() const;

    Ticker ticker_;
    WatchStyle style_;
    TerminalSession session_;
};

} // namespace qk::info
