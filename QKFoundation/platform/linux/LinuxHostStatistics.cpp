// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxHostStatistics.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/Counters.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

constexpr std::size_t kChunk = std::size_t{16} << 10U; // the "cpu" lines of 150 processors
constexpr std::size_t kLimit = std::size_t{16} << 20U;
constexpr std::size_t kPage = 4096;

// The whole head of /proc/stat on a machine whose processors do not fit into one chunk; nothing when it cannot be read.
// Always in one reading: between two of them the counters go on, and numbers that grow longer move what stands behind.
std::optional<std::string> readLargeHead(const KeptFile& file) {
    std::string head;
    for (std::size_t capacity = 4 * kChunk; capacity <= kLimit; capacity *= 4) {
        head.resize(capacity);
        const ssize_t count = file.read(head);
        if (count < 0) {
            return std::nullopt;
        }
        const auto length = static_cast<std::size_t>(count);
        if (length < capacity || parse::holdsAllProcessors(head)) {
            head.resize(length);
            return head;
        }
    }
    return std::nullopt;
}

// "pswpout" stands in the first half of a file whose making costs more than everything else here, so it is read page by
// page. The kernel goes on at a line's beginning as long as nobody else reads in between.
std::uint64_t readSwapOuts(const KeptFile& file) {
    std::array<char, 4 * kPage> buffer;
    std::size_t length = 0;
    while (length + kPage <= buffer.size()) {
        const ssize_t count = file.read(std::span(buffer).subspan(length, kPage), length);
        if (count <= 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
        if (const auto pages = parse::swapOuts({buffer.data(), length})) {
            return *pages;
        }
    }
    return 0;
}

} // namespace

LinuxHostStatistics::LinuxHostStatistics(const LinuxRoot& root)
    : root_(root),
      stat_(root.path("/proc/stat")),
      meminfo_(root.path("/proc/meminfo")),
      vmstat_(root.path("/proc/vmstat")),
      swaps_(root.path("/proc/swaps")) {}

int LinuxHostStatistics::hostProcessorInfo(ProcessorLoadInfo& info) const {
    std::array<char, kChunk> chunk;
    const ssize_t count = stat_.read(chunk);
    if (count < 0) {
        return errno;
    }
    const std::string_view head(chunk.data(), static_cast<std::size_t>(count));
    if (parse::holdsAllProcessors(head)) {
        return parse::processorTicks(head, info) ? 0 : EIO;
    }
    const std::optional<std::string> whole = readLargeHead(stat_);
    return whole.has_value() && parse::processorTicks(*whole, info) ? 0 : EIO;
}

int LinuxHostStatistics::hostStatistics64(VMStatistics64& statistics) const {
    std::array<char, kChunk> chunk;
    const ssize_t count = meminfo_.read(chunk);
    if (count < 0) {
        return errno;
    }
    const auto pageSize = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    const auto counts = parse::memoryStatistics({chunk.data(), static_cast<std::size_t>(count)}, pageSize);
    if (!counts.has_value()) {
        return EIO;
    }
    statistics = *counts;
    const std::scoped_lock lock(mutex_);
    statistics.compressor_page_count += static_cast<std::uint32_t>(bytesCompressedByZram() / pageSize);
    statistics.swapouts = readSwapOuts(vmstat_);
    return 0;
}

std::uint64_t LinuxHostStatistics::bytesCompressedByZram() const {
    if (swaps_.hasChanged() || !zram_.has_value()) { // asked first, so that a change while it is read is seen next time
        zram_.emplace();
        const std::string swaps = readBytes(root_.path("/proc/swaps")).value_or(std::string());
        for (const std::uint32_t device : parse::compressedSwaps(swaps)) {
            zram_->emplace_back(root_.path("/sys/block/zram") + std::to_string(device) + "/mm_stat");
        }
    }
    std::uint64_t bytes = 0;
    for (const KeptFile& file : *zram_) {
        std::array<char, 256> text;
        const ssize_t count = file.read(text);
        if (count > 0) {
            bytes += parse::compressedBytes({text.data(), static_cast<std::size_t>(count)}).value_or(0);
        }
    }
    return bytes;
}

} // namespace qk::platform
