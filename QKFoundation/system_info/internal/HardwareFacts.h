// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

/// Facts that the kernel of a given machine tells by name.
namespace qk::internal {

struct FreeWithC {
    void operator()(char* memory) const noexcept { std::free(memory); }
};

/// A zero-terminated text in memory of `malloc`, or null.
using CText = std::unique_ptr<char, FreeWithC>;

/// `getHardwareInfoStringWithName`. Null when `name` is null or the fact takes no bytes. "" when the fact takes some
/// but cannot be read then.
[[nodiscard]] CText getHardwareInfoStringWithName(const platform::Services& services, const char* name);

/// `getHardwareInfoInteger32WithName`. 0 when `name` is null or the read fails, also because the fact is wider.
[[nodiscard]] std::uint32_t getHardwareInfoInteger32WithName(const platform::Services& services, const char* name);

/// `getHardwareInfoInteger64WithName`. 0 when `name` is null or the read fails, also because the fact is wider.
[[nodiscard]] std::uint64_t getHardwareInfoInteger64WithName(const platform::Services& services, const char* name);

[[nodiscard]] CText getHardwareModel(const platform::Services& services);

/// `getOSRevision`. The operating system's build, or null.
[[nodiscard]] CText getOSRevision(const platform::Services& services);

[[nodiscard]] CText getProcessorTypeName(const platform::Services& services);
[[nodiscard]] std::uint32_t getNumberOfPhysicalProcessors(const platform::Services& services);
[[nodiscard]] std::uint32_t getNumberOfLogicalProcessors(const platform::Services& services);
[[nodiscard]] std::uint32_t getMaximumFrequencyOfProcessors(const platform::Services& services);
[[nodiscard]] std::uint64_t getPhysicalMemorySize(const platform::Services& services);
[[nodiscard]] std::uint64_t getPhysicalMemoryPageSize(const platform::Services& services);
[[nodiscard]] bool isProcessor64bit(const platform::Services& services);

} // namespace qk::internal
