// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/Watch.h"

#include "tools/qkinfo/watch/LineConsole.h"
#include "tools/qkinfo/watch/TerminalConsole.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace qk::info {

namespace {

const char* variable(const char* name) {
    return std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here changes the environment
}

} // namespace

bool showsBlocks(const char* all, const char* characters, const char* language) {
    for (const char* const value : {all, characters, language}) {
        if (value == nullptr || *value == '\0') {
            continue;
        }
        const std::string_view name(value);
        return std::ranges::any_of(std::initializer_list<std::string_view>{"UTF-8", "utf-8", "UTF8", "utf8"},
                                   [&](std::string_view way) { return name.find(way) != std::string_view::npos; });
    }
    return false;
}

int watch(const WatchOptions& options, bool json, ColorChoice color, const Clock& clock) {
    MachineSource source(clock);
    // The first sample need not be waited for as long as the others.
    const std::chrono::milliseconds first = std::min(options.interval, kShortestMeasurement);
    const Terminal terminal = terminalAt(STDOUT_FILENO);
    if (json || !terminal.takesSequences) {
        LineConsole console(first, options.interval, json ? watchJsonLine : watchLine);
        return runWatch(options.count, source, console);
    }
    WatchStyle style;
    style.color = usesColor(color, terminal, variable("NO_COLOR"));
    style.blocks = showsBlocks(variable("LC_ALL"), variable("LC_CTYPE"), variable("LANG"));
    style.interval = options.interval;
    TerminalConsole console(first, style);
    return runWatch(options.count, source, console);
}

} // namespace qk::info
