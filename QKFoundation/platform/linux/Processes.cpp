// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Processes.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"
#include "QKFoundation/platform/linux/parse/ProcessStat.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace qk::platform::processes {
namespace {

constexpr std::size_t kSpareRecords = 64;

// What getdents64 writes; the C library declares it only for its own use.
struct DirectoryEntry {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t size;
    std::uint8_t type;
    char name[1]; // and on, up to a zero byte
};

// Calls `visit` with every entry's name until it answers an error number, which is then the answer; else 0 or the
// reading's own.
template <typename Visitor>
int forEachEntry(int folder, Visitor visit) {
    alignas(DirectoryEntry) std::array<char, std::size_t{32} << 10U> buffer;
    for (;;) {
        const long count = ::syscall(SYS_getdents64, folder, buffer.data(), buffer.size());
        if (count <= 0) {
            return count < 0 ? errno : 0;
        }
        for (long offset = 0; offset < count;) {
            const auto* entry = reinterpret_cast<const DirectoryEntry*>(buffer.data() + offset);
            if (const int error = visit(static_cast<const char*>(entry->name)); error != 0) {
                return error;
            }
            offset += entry->size;
        }
    }
}

// The bytes of /proc/`name`/stat; none when the process is gone.
std::string_view readStat(int folder, const char* name, std::span<char> buffer) {
    std::array<char, 32> path;
    const std::size_t length = std::min(std::strlen(name), path.size() - sizeof "/stat");
    std::memcpy(path.data(), name, length);
    std::memcpy(path.data() + length, "/stat", sizeof "/stat");
    const UniqueFD file(::openat(folder, path.data(), O_RDONLY | O_CLOEXEC));
    const ssize_t count = file ? ::read(file.get(), buffer.data(), buffer.size()) : -1;
    return {buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

void writeRecord(char* place, std::int32_t pid, const parse::ProcessStat& stat) {
    kinfo_proc record{};
    record.kp_proc.p_pid = pid;
    record.kp_proc.p_stat = stat.state;
    std::memcpy(record.kp_proc.p_comm, stat.command.data(), std::min(stat.command.size(), MAXCOMLEN));
    std::memcpy(place, &record, sizeof record); // the caller's buffer need not be aligned for records
}

} // namespace

std::optional<std::size_t> tableSize(const LinuxRoot& root) {
    const auto bytes = readBytes(root.path("/proc/loadavg"));
    const auto tasks = bytes.has_value() ? parse::taskCount(*bytes) : std::nullopt;
    return tasks.has_value() ? std::optional((*tasks + kSpareRecords) * sizeof(kinfo_proc)) : std::nullopt;
}

int readTable(const LinuxRoot& root, void* buffer, std::size_t* size) {
    const UniqueFD folder(::open(root.path("/proc").c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
    if (!folder) {
        return errno;
    }
    std::size_t written = 0;
    std::array<char, 1024> text;
    const int error = forEachEntry(folder.get(), [&](const char* name) {
        const auto pid = parse::number<std::int32_t>(name);
        if (!pid.has_value()) {
            return 0;
        }
        const auto stat = parse::processStat(readStat(folder.get(), name, text));
        if (!stat.has_value() || stat->isKernelThread) {
            return 0;
        }
        if (*size - written < sizeof(kinfo_proc)) {
            return ENOMEM;
        }
        writeRecord(static_cast<char*>(buffer) + written, *pid, *stat);
        written += sizeof(kinfo_proc);
        return 0;
    });
    if (error == 0) {
        *size = written;
    }
    return error;
}

} // namespace qk::platform::processes
