// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/watch/WatchSample.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace qk::info {

/// What a frame is drawn on.
struct WatchStyle {
    std::size_t width = 80;
    std::size_t height = 24;
    bool color = false;
    bool blocks = true; ///< whether the terminal shows the block characters of Unicode; else bars are of ASCII
    std::chrono::milliseconds interval{1000};
};

/// A frame, as lines from top to bottom: at most `height` of them, none wider than `width`. Where there is less room,
/// the less important lines are left out: first blank ones, then details, then curves, then the title, then volumes.
/// `history` is not empty.
[[nodiscard]] std::vector<std::string> watchFrame(const WatchHistory& history, const WatchStyle& style);

/// What puts `frame` in the place of the one that a terminal shows, in one piece.
[[nodiscard]] std::string drawnInPlace(const std::vector<std::string>& frame);

} // namespace qk::info
