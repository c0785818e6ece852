// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/watch/WatchSample.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace qk::info {

/// What the command line asks `watch` for.
struct WatchOptions {
    std::chrono::milliseconds interval{1000};
    std::optional<std::uint64_t> count; ///< of samples; nothing for no end
};

enum class WatchEvent {
    Sample, ///< it is time for the next sample
    Redraw, ///< what was shown is no longer right: another size, or back from elsewhere
    Quit,   ///< the user has seen enough
};

/// Where samples are shown, and what says when.
class WatchConsole {
public:
    WatchConsole() = default;
    WatchConsole(const WatchConsole&) = delete;
    WatchConsole& operator=(const WatchConsole&) = delete;
    virtual ~WatchConsole() = default;

    /// Waits for the next event.
    [[nodiscard]] virtual WatchEvent next() = 0;

    /// Shows the latest sample of `history`, which is new. 0, else the number of the error.
    [[nodiscard]] virtual int show(const WatchHistory& history) = 0;

    /// Shows it once more, where that makes sense.
    [[nodiscard]] virtual int showAgain(const WatchHistory& history) = 0;

    /// Ends with what is to stay visible.
    [[nodiscard]] virtual int finish(const WatchHistory& history) = 0;
};

/// Takes samples from `source` and shows them on `console` until the count is reached or the user has seen enough.
/// 0, else the number of the error when they could not be shown.
[[nodiscard]] int runWatch(std::optional<std::uint64_t> count, WatchSource& source, WatchConsole& console);

} // namespace qk::info
