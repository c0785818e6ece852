// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Counters.h"

#include "QKFoundation/platform/linux/parse/Text.h"

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
struct Field {
    std::string_view name;
    std::uint64_t value = 0;
    bool found = false;
};
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
using FieldTable = std::array<Field, Fields>;

FieldTable readFields(std::string_view meminfo) {
    FieldTable fields{{{"MemFree"},
                       {"Buffers"},
                       {"Cached"},
                       {"Mlocked"},
                       {"Zswap"},
                       {"AnonPages"},
                       {"Shmem"},
                       {"SUnreclaim"},
                       {"KernelStack"},
                       {"PageTables"},
                       {"VmallocUsed"},
                       {"Percpu"},
                       {"HugePages_Total"},
                       {"Hugepagesize"}}};
    std::size_t next = 0; // the kernel prints them in this order, so the search goes on where the last one was found
    forEachLine(meminfo, [&](std::string_view line) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) {
            return true;
        }
        const std::string_view name = line.substr(0, colon);
        for (std::size_t step = 0; step < Fields; ++step) {
            Field& field = fields[(next + step) % Fields];
            if (field.name == name) {
                std::string_view rest = line.substr(colon + 1);
                if (const auto value = takeNumber(rest); value.has_value() && !field.found) {
                    field.value = *value;
                    field.found = true;
                }
                next = (next + step + 1) % Fields;
                break;
            }
        }
        return true;
    });
    return fields;
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
    const std::size_t last = stat.rfind("\ncpu");
    const std::size_t end = last != std::string_view::npos ? stat.find('\n', last + 1) : std::string_view::npos;
    if (end == std::string_view::npos) {
        return false;
    }
    const std::string_view next = stat.substr(end + 1, kProcessor.size());
    return next != kProcessor.substr(0, next.size()); // nothing, "c" and "cp" may be the next processor's line
}

std::optional<VMStatistics64> memoryStatistics(std::string_view meminfo, std::uint64_t pageSize) {
    constexpr std::uint64_t kUnit = 1024;
    const FieldTable fields = readFields(meminfo);
    if (pageSize == 0 || !fields[MemFree].found || !fields[AnonPages].found) {
        return std::nullopt;
    }
    const auto pages = [pageSize](std::uint64_t kilobytes) {
        return static_cast<std::uint32_t>(kilobytes * kUnit / pageSize);
    };
    const auto value = [&fields](FieldIndex index) { return fields[index].value; };
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

} // namespace qk::platform::parse
