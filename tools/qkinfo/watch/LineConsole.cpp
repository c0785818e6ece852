// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/LineConsole.h"

#include "tools/qkinfo/Output.h"

#include <unistd.h>

namespace qk::info {

WatchEvent LineConsole::next() {
    ticker_.take();
    return WatchEvent::Sample;
}

int LineConsole::show(const WatchHistory& history) {
    return writeAll(STDOUT_FILENO, line_(history.latest()));
}

int LineConsole::showAgain(const WatchHistory& /*history*/) {
    return 0;
}

int LineConsole::finish(const WatchHistory& /*history*/) {
    return 0;
}

} // namespace qk::info
