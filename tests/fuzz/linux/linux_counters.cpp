// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Counters.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// /proc/stat, /proc/meminfo, /proc/vmstat and mm_stat, each parser on the same bytes.
namespace {

using qk::fuzz::require;
using namespace qk::platform;

// What was read, written again as the kernel would, reads the same.
void checkTicks(std::string_view text) {
    ProcessorLoadInfo info;
    if (!parse::processorTicks(text, info)) {
        return;
    }
    require(!info.processors.empty() && info.ticks.size() == CPU_STATE_MAX * info.processors.size());
    std::string written = "cpu  0 0 0 0\n";
    for (std::size_t index = 0; index < info.processors.size(); ++index) {
        written += "cpu" + std::to_string(info.processors[index]);
        for (const ProcessorState state : {CPU_STATE_USER, CPU_STATE_NICE, CPU_STATE_SYSTEM, CPU_STATE_IDLE}) {
            written += " " + std::to_string(static_cast<std::uint32_t>(info.ticks[CPU_STATE_MAX * index + state]));
        }
        written += "\n";
    }
    require(!parse::holdsAllProcessors(written) && parse::holdsAllProcessors(written + "intr 0\n"));
    ProcessorLoadInfo again;
    require(parse::processorTicks(written + "intr 0\n", again));
    require(again.ticks == info.ticks && again.processors == info.processors);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkTicks(text);
    const std::string large = "cpu0 1 2 3 4\n" + std::string(text);
    for (std::size_t length = 0; length <= large.size(); ++length) { // who has the head has it with more behind it too
        require(!parse::holdsAllProcessors(std::string_view(large).substr(0, length)) ||
                parse::holdsAllProcessors(large));
    }
    const auto memory = parse::memoryStatistics(text, 4096);
    require(!memory.has_value() || memory->swapouts == 0);
    require(!parse::memoryStatistics(text, 0).has_value());
    static_cast<void>(parse::swapOuts(text));
    static_cast<void>(parse::compressedBytes(text));
    static_cast<void>(parse::compressedSwaps(text));
    return 0;
}
