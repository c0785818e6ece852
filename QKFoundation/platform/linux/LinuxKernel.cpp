// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxKernel.h"

#include "QKFoundation/platform/linux/Hardware.h"
#include "QKFoundation/platform/linux/OperatingSystem.h"
#include "QKFoundation/platform/linux/Processes.h"
#include "QKFoundation/platform/values/NSString.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace qk::platform {
namespace {

// A fact as the bytes that a caller gets; nothing when the system does not have it.
using Fact = std::optional<std::string>;

Fact text(const std::optional<std::string>& value) {
    if (!value.has_value()) {
        return std::nullopt;
    }
    std::string bytes = NSString::fromUTF8Lossy(*value).utf8Lossy();
    bytes.push_back('\0');
    return bytes;
}

template <typename T>
Fact plain(const std::optional<T>& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    if (!value.has_value()) {
        return std::nullopt;
    }
    std::string bytes(sizeof(T), '\0');
    std::memcpy(bytes.data(), &*value, sizeof(T));
    return bytes;
}

std::optional<std::uint64_t> pageSize() {
    const long size = ::sysconf(_SC_PAGESIZE);
    return size > 0 ? std::optional(static_cast<std::uint64_t>(size)) : std::nullopt;
}

struct Entry {
    std::string_view name;
    Fact (*read)(const LinuxRoot& root);
};

Fact read64BitCapable(const LinuxRoot& root) {
    const std::optional<bool> capable = hardware::is64BitCapable(root);
    return plain(capable.has_value() ? std::optional<std::int32_t>(*capable ? 1 : 0) : std::nullopt);
}

constexpr std::array kEntries = {
    Entry{"hw.cpu64bit_capable", read64BitCapable},
    Entry{"hw.cpufrequency_max", [](const LinuxRoot& root) { return plain(hardware::maximumFrequency(root)); }},
    Entry{"hw.logicalcpu", [](const LinuxRoot& root) { return plain(hardware::logicalProcessors(root)); }},
    Entry{"hw.memsize", [](const LinuxRoot& root) { return plain(hardware::memorySize(root)); }},
    Entry{"hw.model", [](const LinuxRoot& root) { return text(hardware::model(root)); }},
    Entry{"hw.pagesize", [](const LinuxRoot& /*root*/) { return plain(pageSize()); }},
    Entry{"hw.physicalcpu", [](const LinuxRoot& root) { return plain(hardware::physicalProcessors(root)); }},
    Entry{"kern.osversion", [](const LinuxRoot& root) { return text(operatingsystem::build(root)); }},
    Entry{"machdep.cpu.brand_string", [](const LinuxRoot& root) { return text(hardware::processorName(root)); }},
};

Fact bootTime(const LinuxRoot& root) {
    const std::optional<std::int64_t> seconds = operatingsystem::bootTime(root);
    return plain(seconds.has_value() ? std::optional(TimeValue{*seconds, 0, 0}) : std::nullopt);
}

int processTable(const LinuxRoot& root, void* buffer, std::size_t* size) {
    if (buffer != nullptr) {
        return processes::readTable(root, buffer, size);
    }
    const auto needed = processes::tableSize(root);
    *size = needed.value_or(*size);
    return needed.has_value() ? 0 : ENOENT;
}

int answer(const Fact& fact, void* buffer, std::size_t* size) {
    if (!fact.has_value()) {
        return ENOENT;
    }
    if (buffer != nullptr) {
        if (*size < fact->size()) {
            return ENOMEM;
        }
        std::memcpy(buffer, fact->data(), fact->size());
    }
    *size = fact->size();
    return 0;
}

} // namespace

int LinuxKernel::sysctlbyname(const char* name, void* buffer, std::size_t* size) const {
    const auto* const entry = std::ranges::find(kEntries, std::string_view(name), &Entry::name);
    return answer(entry != kEntries.end() ? entry->read(root_) : std::nullopt, buffer, size);
}

int LinuxKernel::sysctl(std::span<const int> name, void* buffer, std::size_t* size) const {
    constexpr std::array kVersion = {kCtlKern, kKernVersion};
    constexpr std::array kBootTime = {kCtlKern, kKernBootTime};
    constexpr std::array kProcesses = {kCtlKern, kKernProc, kKernProcAll};
    if (std::ranges::equal(name, kProcesses)) {
        return processTable(root_, buffer, size);
    }
    if (std::ranges::equal(name, kVersion)) {
        return answer(text(operatingsystem::kernelVersion(root_)), buffer, size);
    }
    return answer(std::ranges::equal(name, kBootTime) ? bootTime(root_) : std::nullopt, buffer, size);
}

} // namespace qk::platform
