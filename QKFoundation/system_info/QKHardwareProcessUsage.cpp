// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareProcessUsage.h"

#include "QKFoundation/platform/services/Services.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace qk {
namespace {

using platform::extern_proc;
using platform::kinfo_proc;

/// The process table as the kernel handed it out: raw memory, since most of its pages are never looked at.
struct Table {
    struct Free {
        void operator()(void* bytes) const noexcept { std::free(bytes); }
    };
    std::unique_ptr<void, Free> memory;
    std::size_t size = 0; // in bytes
};

std::optional<Table> readTable(const platform::Kernel& kernel) {
    static constexpr std::array kName{platform::kCtlKern, platform::kKernProc, platform::kKernProcAll};
    for (;;) {
        Table table;
        if (kernel.sysctl(kName, nullptr, &table.size) != 0) {
            return std::nullopt;
        }
        table.memory.reset(std::malloc(std::max<std::size_t>(table.size, 1)));
        if (table.memory == nullptr) {
            return std::nullopt;
        }
        const int error = kernel.sysctl(kName, table.memory.get(), &table.size);
        if (error == 0) {
            return table;
        }
        if (error != ENOMEM) { // which says that the table has grown since its size was asked for
            return std::nullopt;
        }
    }
}

std::optional<NSString> pathOf(const platform::ProcessTable& table, std::int32_t pid) {
    const std::optional<std::string> path = table.pidPath(pid);
    return path.has_value() ? NSString::fromUTF8(*path) : std::nullopt;
}

std::optional<NSString> nameOf(const platform::ProcessTable& table, const extern_proc& process) {
    const std::string_view command(process.p_comm, sizeof process.p_comm);
    std::optional<NSString> name = NSString::fromUTF8(command.substr(0, command.find('\0')));
    if (const auto path = pathOf(table, process.p_pid)) {
        NSString executable = path->lastPathComponent();
        if (executable.length() > (name.has_value() ? name->length() : 0)) {
            return executable;
        }
    }
    return name;
}

} // namespace

std::optional<QKHardwareProcessUsageData> QKHardwareProcessUsage::collectProcessesUsageData() {
    const auto services = platform::services();
    const std::optional<Table> table = readTable(*services->kernel);
    if (!table.has_value()) {
        return std::nullopt;
    }
    QKHardwareProcessUsageData data;
    data.numberOfProcesses = table->size / sizeof(kinfo_proc);
    const auto* bytes = static_cast<const char*>(table->memory.get());
    for (std::uint64_t index = 0; index < data.numberOfProcesses; ++index) {
        const char* record = bytes + index * sizeof(kinfo_proc);
        if (isInactiveProcessForProcessState(record[offsetof(extern_proc, p_stat)])) {
            extern_proc process;
            std::memcpy(&process, record, sizeof process);
            if (auto name = nameOf(*services->processTable, process)) {
                data.inactiveProcesses.push_back(*std::move(name));
            }
        }
    }
    return data;
}

bool QKHardwareProcessUsage::isInactiveProcessForProcessState(char state) {
    return state == platform::SSTOP || state == platform::SZOMB;
}

std::optional<NSString> QKHardwareProcessUsage::processNameForProc(const extern_proc& process) {
    return nameOf(*platform::services()->processTable, process);
}

std::optional<NSString> QKHardwareProcessUsage::pathForPID(std::int32_t pid) {
    return pathOf(*platform::services()->processTable, pid);
}

} // namespace qk
