// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/ProcessStat.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// /proc/PID/stat and /proc/loadavg. Whatever a process calls itself, its state is not the name's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using qk::fuzz::require;
    using namespace qk::platform;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto stat = parse::processStat(text); stat.has_value()) {
        require(stat->state >= SRUN && stat->state <= SZOMB);
        require(stat->command.data() > text.data() &&
                stat->command.data() + stat->command.size() < text.data() + text.size());
    }
    static_cast<void>(parse::taskCount(text));
    const std::string line = "1 (" + std::string(text) + ") Z 1 2 3 0 -1 4194560 100 0\n";
    const auto named = parse::processStat(line);
    require(named.has_value() && named->state == SZOMB && !named->isKernelThread && named->command == text);
    return 0;
}
