// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareFunctions.h"

#include "QKFoundation/system_info/internal/HardwareFacts.h"

#include <array>
#include <atomic>

namespace qk::internal {
namespace {

template <typename Integer>
Integer readInteger(const platform::Services& services, const char* name) {
    if (name == nullptr) {
        return 0;
    }
    Integer value = 0;
    std::size_t size = sizeof value;
    return services.kernel->sysctlbyname(name, &value, &size) == 0 ? value : 0;
}

// 0 means "not read yet", so a fact that reads as 0 is asked for again by every call.
template <typename Integer, typename Read>
Integer cached(std::atomic<Integer>& cache, Read read) {
    Integer value = cache.load(std::memory_order_relaxed);
    if (value == 0) {
        value = static_cast<Integer>(read());
        cache.store(value, std::memory_order_relaxed);
    }
    return value;
}

} // namespace

CText getHardwareInfoStringWithName(const platform::Services& services, const char* name) {
    if (name == nullptr) {
        return nullptr;
    }
    std::size_t size = 0;
    services.kernel->sysctlbyname(name, nullptr, &size);
    if (size == 0) {
        return nullptr;
    }
    // Zeroed, and one byte more than the fact takes: the text ends even when the second read fails or leaves the zero
    // byte out.
    CText text(static_cast<char*>(std::calloc(size + 1, 1)));
    if (text != nullptr) {
        services.kernel->sysctlbyname(name, text.get(), &size);
    }
    return text;
}

std::uint32_t getHardwareInfoInteger32WithName(const platform::Services& services, const char* name) {
    return readInteger<std::uint32_t>(services, name);
}

std::uint64_t getHardwareInfoInteger64WithName(const platform::Services& services, const char* name) {
    return readInteger<std::uint64_t>(services, name);
}

CText getHardwareModel(const platform::Services& services) {
    return getHardwareInfoStringWithName(services, "hw.model");
}

CText getOSRevision(const platform::Services& services) {
    return getHardwareInfoStringWithName(services, "kern.osversion");
}

CText getProcessorTypeName(const platform::Services& services) {
    return getHardwareInfoStringWithName(services, "machdep.cpu.brand_string");
}

std::uint32_t getNumberOfPhysicalProcessors(const platform::Services& services) {
    return cached(services.facts->physicalProcessors,
                  [&] { return getHardwareInfoInteger32WithName(services, "hw.physicalcpu"); });
}

std::uint32_t getNumberOfLogicalProcessors(const platform::Services& services) {
    return cached(services.facts->logicalProcessors,
                  [&] { return getHardwareInfoInteger32WithName(services, "hw.logicalcpu"); });
}

std::uint32_t getMaximumFrequencyOfProcessors(const platform::Services& services) {
    static constexpr std::uint64_t kHertzPerMegahertz = 1'000'000;
    return cached(services.facts->maximumFrequency, [&] {
        return getHardwareInfoInteger64WithName(services, "hw.cpufrequency_max") / kHertzPerMegahertz;
    });
}

std::uint64_t getPhysicalMemorySize(const platform::Services& services) {
    return cached(services.facts->physicalMemory,
                  [&] { return getHardwareInfoInteger64WithName(services, "hw.memsize"); });
}

std::uint64_t getPhysicalMemoryPageSize(const platform::Services& services) {
    return cached(services.facts->pageSize, [&] { return getHardwareInfoInteger64WithName(services, "hw.pagesize"); });
}

bool isProcessor64bit(const platform::Services& services) {
    static constexpr std::array kNames{"hw.cpu64bit_capable", "hw.optional.x86_64", "hw.optional.64bitops"};
    for (const char* name : kNames) {
        std::uint32_t value = 0;
        std::size_t size = sizeof value;
        if (services.kernel->sysctlbyname(name, &value, &size) == 0) {
            return value == 1; // the first name that can be read decides
        }
    }
    return false;
}

} // namespace qk::internal

char* getHardwareModel(void) {
    return qk::internal::getHardwareModel(*qk::platform::services()).release();
}

char* getProcessorTypeName(void) {
    return qk::internal::getProcessorTypeName(*qk::platform::services()).release();
}

uint32_t getNumberOfPhysicalProcessors(void) {
    return qk::internal::getNumberOfPhysicalProcessors(*qk::platform::services());
}

uint32_t getNumberOfLogicalProcessors(void) {
    return qk::internal::getNumberOfLogicalProcessors(*qk::platform::services());
}

uint32_t getMaximumFrequencyOfProcessors(void) {
    return qk::internal::getMaximumFrequencyOfProcessors(*qk::platform::services());
}

uint64_t getPhysicalMemorySize(void) {
    return qk::internal::getPhysicalMemorySize(*qk::platform::services());
}

uint64_t getPhysicalMemoryPageSize(void) {
    return qk::internal::getPhysicalMemoryPageSize(*qk::platform::services());
}

bool isProcessor64bit(void) {
    return qk::internal::isProcessor64bit(*qk::platform::services());
}
