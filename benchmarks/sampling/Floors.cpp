// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Register.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// What the kernel alone costs: the same readings, and nothing is made of them.
namespace qk::bench {
namespace {

constexpr std::size_t kPage = 4096;

void readKept(int file, std::size_t size) {
    static std::array<char, 4 * kPage> buffer;
    benchmark::DoNotOptimize(::pread(file, buffer.data(), size, 0));
}

int keep(const char* path) {
    return ::open(path, O_RDONLY | O_CLOEXEC);
}

struct Entry {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t size;
    std::uint8_t type;
    char name[1];
};

void readProcesses() {
    static std::array<char, 8 * kPage> entries;
    static std::array<char, 1024> text;
    const int folder = ::open("/proc", O_RDONLY | O_CLOEXEC | O_DIRECTORY);
    for (;;) {
        const long count = ::syscall(SYS_getdents64, folder, entries.data(), entries.size());
        if (count <= 0) {
            break;
        }
        for (long offset = 0; offset < count;) {
            const auto* entry = reinterpret_cast<const Entry*>(entries.data() + offset);
            offset += entry->size;
            if (entry->name[0] < '0' || entry->name[0] > '9') {
                continue;
            }
            char path[64];
            std::strcpy(path, entry->name);
            std::strcat(path, "/stat");
            const int file = ::openat(folder, path, O_RDONLY | O_CLOEXEC);
            benchmark::DoNotOptimize(::read(file, text.data(), text.size()));
            ::close(file);
        }
    }
    ::close(folder);
}

void readVolumes() {
    static std::array<char, 256 * kPage> text;
    const int file = keep("/proc/self/mountinfo");
    std::size_t length = 0;
    for (ssize_t count = 1; count > 0; length += static_cast<std::size_t>(count)) {
        count = ::read(file, text.data() + length, text.size() - length);
    }
    ::close(file);
    const std::string_view table(text.data(), length);
    for (std::size_t place = table.find(" - "); place != std::string_view::npos; place = table.find(" - ", place + 1)) {
        const std::size_t source = table.find(' ', place + 3);
        if (table.substr(source + 1, 5) != "/dev/") {
            continue;
        }
        std::size_t word = table.rfind('\n', place) + 1; // the fifth word of the line is the path
        for (int skipped = 0; skipped < 4; ++skipped) {
            word = table.find(' ', word) + 1;
        }
        const std::string path(table.substr(word, table.find(' ', word) - word));
        struct statvfs capacity {};
        benchmark::DoNotOptimize(::statvfs(path.c_str(), &capacity));
    }
}

const bool kProcessors = compete("floor", Job::processors, [file = keep("/proc/stat")] { readKept(file, 4 * kPage); });
const bool kMemory = compete("floor", Job::memory, [file = keep("/proc/meminfo"), vmstat = keep("/proc/vmstat")] {
    readKept(file, 4 * kPage);
    readKept(vmstat, kPage);
});
const bool kProcesses = compete("floor", Job::processes, readProcesses);
const bool kVolumes = compete("floor", Job::volumes, readVolumes);

} // namespace
} // namespace qk::bench
