// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Counters.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace qk::platform::parse {
namespace {

// Takes a run of digits, and the blanks before it, off the head of `text`; nothing when there is none. Numbers beyond
// 64 bits wrap.
std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    std::size_t index = 0;
    while (index < text.size() && text[index] == ' ') {
        ++index;
    }
    const std::size_t first = index;
    std::uint64_t number = 0;
    for (; index < text.size() && text[index] >= '0' && text[index] <= '9'; ++index) {
        number = number * 10 + static_cast<std::uint64_t>(text[index] - '0');
    }
    if (index == first) {
        return std::nullopt;
    }
    text.remove_prefix(index);
    return number;
}

// One line behind its "cpu"; false when it is damaged.
bool addProcessor(std::string_view line, ProcessorLoadInfo& info) {
    enum Column : std::size_t { User, Nice, System, Idle, IOWait, IRQ, SoftIRQ, Columns };
    const auto processor = takeNumber(line);
    std::array<std::uint64_t, Columns> columns{};
    std::size_t count = 0;
    while (processor.has_value() && count < Columns) {
        const auto ticks = takeNumber(line);
        if (!ticks.has_value()) {
            break;
        }
        columns[count++] = *ticks;
    }
    if (count <= Idle || *processor > std::numeric_limits<std::uint32_t>::max()) { // older kernels print four columns
        return false;
    }
    const auto add = [&info](std::uint64_t ticks) {
        info.ticks.push_back(static_cast<std::int32_t>(static_cast<std::uint32_t>(ticks)));
    };
    add(columns[User]);
    add(columns[System] + columns[IRQ] + columns[SoftIRQ]);
    add(columns[Idle] + columns[IOWait]);
    add(columns[Nice]);
    info.processors.push_back(static_cast<std::uint32_t>(*processor));
    return true;
}

// The fields of /proc/meminfo that are asked for, in kB but for the number of huge pages.
enum FieldIndex : std::size_t {
    MemFree,
    Buffers,
    Cached,
    Mlocked,
    Zswap,
    AnonPages,
    Shmem,
    SUnreclaim,
    KernelStack,
    PageTables,
    VmallocUsed,
    Percpu,
    HugePagesTotal,
    HugePageSize,
    Fields
};
constexpr std::array<std::string_view, Fields> kFieldNames{
    "MemFree",    "Buffers",     "Cached",     "Mlocked",     "Zswap",  "AnonPages",       "Shmem",
    "SUnreclaim", "KernelStack", "PageTables", "VmallocUsed", "Percpu", "HugePages_Total", "Hugepagesize"};
using FieldValues = std::array<std::optional<std::uint64_t>, Fields>;

// Where a name stands in the table below, in which no two of ours meet. Most of the file's fields are not ours, and are
// told by one look.
constexpr std::size_t kSlots = 32;
constexpr std::size_t slotOf(std::string_view name) {
    const auto unit = [](char letter) { return static_cast<std::size_t>(static_cast<unsigned char>(letter)); };
    return (name.size() + 6 * unit(name.front()) + unit(name.back())) % kSlots;
}
constexpr std::array<std::size_t, kSlots> makeSlots() {
    std::array<std::size_t, kSlots> slots{};
    slots.fill(Fields);
    for (std::size_t index = 0; index < Fields; ++index) {
        slots[slotOf(kFieldNames[index])] = index;
    }
    return slots;
}
constexpr std::array<std::size_t, kSlots> kFieldOfSlot = makeSlots();
static_assert(kSlots - static_cast<std::size_t>(std::ranges::count(kFieldOfSlot, Fields)) == Fields);

FieldValues readFields(std::string_view meminfo) {
    FieldValues values{};
    forEachLine(meminfo, [&](std::string_view line) {
        const std::size_t colon = line.find(':');
        if (colon == 0 || colon == std::string_view::npos) {
            return true;
        }
        const std::string_view name = line.substr(0, colon);
        const std::size_t index = kFieldOfSlot[slotOf(name)];
        if (index != Fields && kFieldNames[index] == name && !values[index].has_value()) {
            line.remove_prefix(colon + 1);
            values[index] = takeNumber(line);
        }
        return true;
    });
    return values;
}

} // namespace

bool processorTicks(std::string_view stat, ProcessorLoadInfo& info) {
    info.ticks.clear();
    info.processors.clear();
    bool isWhole = true;
    forEachLine(stat, [&](std::string_view line) {
        if (!line.starts_with("cpu")) {
            return false; // these lines stand at the head of the file
        }
        line.remove_prefix(3);
        if (!line.starts_with(' ')) { // a blank: the sum over all
            isWhole = addProcessor(line, info);
        }
        return isWhole;
    });
    return isWhole && !info.processors.empty();
}

bool holdsAllProcessors(std::string_view stat) {
    constexpr std::string_view kProcessor = "cpu";
    while (stat.starts_with(kProcessor)) {
        const std::size_t end = stat.find('\n');
        stat.remove_prefix(end == std::string_view::npos ? stat.size() : end + 1);
    }
    return !kProcessor.starts_with(stat); // nothing, "c" and "cp" may be the next processor's line
}

std::optional<VMStatistics64> memoryStatistics(std::string_view meminfo, std::uint64_t pageSize) {
    constexpr std::uint64_t kUnit = 1024;
    const FieldValues fields = readFields(meminfo);
    if (pageSize == 0 || !fields[MemFree].has_value() || !fields[AnonPages].has_value()) {
        return std::nullopt;
    }
    const auto pages = [pageSize](std::uint64_t kilobytes) {
        return static_cast<std::uint32_t>(kilobytes * kUnit / pageSize);
    };
    const auto value = [&fields](FieldIndex index) { return fields[index].value_or(0); };
    const std::uint64_t files = value(Cached) + value(Buffers); // shared memory is inside "Cached"
    VMStatistics64 statistics;
    statistics.free_count = pages(value(MemFree));
    statistics.wire_count = pages(value(SUnreclaim) + value(KernelStack) + value(PageTables) + value(Percpu) +
                                  value(VmallocUsed) + value(Mlocked) + value(HugePagesTotal) * value(HugePageSize));
    statistics.compressor_page_count = pages(value(Zswap));
    statistics.external_page_count = pages(files > value(Shmem) ? files - value(Shmem) : 0);
    statistics.internal_page_count = pages(value(AnonPages) + value(Shmem));
    return statistics;
}

std::optional<std::uint64_t> swapOuts(std::string_view vmstat) {
    constexpr std::string_view kName = "\npswpout ";
    const std::size_t found = vmstat.find(kName);
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view rest = vmstat.substr(found + kName.size());
    const auto pages = takeNumber(rest);
    return rest.starts_with('\n') ? pages : std::nullopt;
}

std::optional<std::uint64_t> compressedBytes(std::string_view memoryStatistics) {
    constexpr int kColumn = 3;
    std::optional<std::uint64_t> number;
    for (int column = 0; column < kColumn; ++column) {
        number = takeNumber(memoryStatistics);
        if (!number.has_value()) {
            return std::nullopt;
        }
    }
    return number;
}

std::vector<std::uint32_t> compressedSwaps(std::string_view swaps) {
    constexpr std::string_view kDevice = "/dev/zram";
    std::vector<std::uint32_t> devices;
    forEachLine(swaps, [&](std::string_view line) {
        if (line.starts_with(kDevice)) {
            line = line.substr(kDevice.size());
            if (const auto device = number<std::uint32_t>(line.substr(0, line.find_first_of(" \t")))) {
                devices.push_back(*device);
            }
        }
        return true;
    });
    return devices;
}

} // namespace qk::platform::parse
