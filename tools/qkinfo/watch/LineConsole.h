// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/watch/Ticker.h"
#include "tools/qkinfo/watch/WatchLoop.h"

namespace qk::info {

/// A line for each sample, on standard output: for pipes and files, and for terminals that know no sequences. Signals
/// do here what they do to any program.
class LineConsole final : public WatchConsole {
public:
    using Renderer = std::string (*)(const WatchSample&);

    LineConsole(std::chrono::milliseconds first, std::chrono::milliseconds interval, Renderer line)
        : ticker_(first, interval), line_(line) {}

    [[nodiscard]] WatchEvent next() override;
    [[nodiscard]] int show(const WatchHistory& history) override;
    [[nodiscard]] int showAgain(const WatchHistory& history) override;
    [[nodiscard]] int finish(const WatchHistory& history) override;

private:
    Ticker ticker_;
    Renderer line_;
};

} // namespace qk::info
