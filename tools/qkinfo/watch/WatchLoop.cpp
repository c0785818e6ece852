// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/WatchLoop.h"

namespace qk::info {

int runWatch(std::optional<std::uint64_t> count, WatchSource& source, WatchConsole& console) {
    WatchHistory history;
    int error = 0;
    while (error == 0 && (!count.has_value() || history.samples() < *count)) {
        const WatchEvent event = console.next();
        if (event == WatchEvent::Quit) {
            break;
        }
        if (event == WatchEvent::Sample) {
            history.add(source.take());
            error = console.show(history);
        } else if (!history.isEmpty()) {
            error = console.showAgain(history);
        }
    }
    return error == 0 ? console.finish(history) : error;
}

} // namespace qk::info
