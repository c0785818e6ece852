// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

namespace qk::info {

/// A line at the bottom of a terminal that says what the program is waiting for.
struct BusyLine {
    int fd = -1; ///< of a terminal that understands escape sequences; -1 for no line at all
    std::string text;
};

/// Runs `work` on a thread of its own and waits for it, with a moving `line` meanwhile, which is cleared at the end.
/// Raises what `work` raises.
///
/// SIGINT, SIGTERM and SIGHUP end the process at once, as if they had not been caught, once the line is cleared and the
/// children that `work` may have started are told to end.
void runInBackground(const std::function<void()>& work, const BusyLine& line);

/// Draws the line once, for work that comes before the waiting.
void drawBusyLine(const BusyLine& line);

/// Serves the main run loop, on the main thread, until `isDone`, which what the loop calls makes true. The line and the
/// signals are as for `runInBackground`.
void serveMainLoop(const std::function<bool()>& isDone, const BusyLine& line);

} // namespace qk::info
