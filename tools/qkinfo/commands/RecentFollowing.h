// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Clock.h"
#include "tools/qkinfo/Terminal.h"
#include "tools/qkinfo/TextRenderer.h"
#include "tools/qkinfo/commands/Recent.h"

#include <optional>
#include <string>
#include <vector>

namespace qk::info {

/// Recent items as a text that grows: a block for each list that differs from the one before, or a line of JSON.
class RecentLog {
public:
    RecentLog(bool json, const TextStyle& style) : json_(json), style_(style) {}

    /// What `list` adds at `time`; nothing when it is the one that was told last.
    [[nodiscard]] std::optional<std::string> add(const List& list, Moment time);

private:
    bool json_;
    TextStyle style_;
    std::string latest_; // as JSON; "" before the first
};

/// Recent items as the lines of a screen, at most `height` of them: `list` as it was at `time`, or that it is being
/// looked for.
[[nodiscard]] std::vector<std::string> recentFrame(const std::optional<List>& list, Moment time, const TextStyle& style,
                                                   std::size_t height);

/// Shows recent items on standard output as they change: in place on a terminal, until "q" is typed, else as a
/// `RecentLog`. Ends by signals as any program does. 0, else the number of the error when they could not be shown.
/// Raises as `homeOf` does.
[[nodiscard]] int followRecentItems(const RecentOptions& options, bool json, ColorChoice color, const Clock& clock);

} // namespace qk::info
