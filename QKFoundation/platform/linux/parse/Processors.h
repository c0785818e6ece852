// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform::parse {

/// What /proc/cpuinfo says.
struct ProcessorInfo {
    std::optional<std::string> modelName; ///< "model name" of the first processor that has one; ARM kernels print none
    std::optional<bool> longMode;         ///< whether "flags" names "lm" (x86); nothing where there are no flags
    std::uint32_t processors = 0;         ///< "processor" lines
};

[[nodiscard]] ProcessorInfo processorInfo(std::string_view cpuinfo);

/// Processors `first` to `last`, both included.
struct ProcessorRange {
    std::uint32_t first;
    std::uint32_t last;

    [[nodiscard]] friend bool operator==(const ProcessorRange&, const ProcessorRange&) = default;
};

/// The ranges of a list such as /sys/devices/system/cpu/online: "0-1,4,6-7". Ascending and apart, as the kernel writes
/// them; nothing for anything else, also for an empty list.
[[nodiscard]] std::optional<std::vector<ProcessorRange>> processorList(std::string_view text);

/// How many processors the ranges hold.
[[nodiscard]] std::uint32_t countOfProcessors(const std::vector<ProcessorRange>& ranges);

/// The number in an entry's name such as "cpu12" with the prefix "cpu"; nothing for any other name ("cpufreq",
/// "cpu01").
[[nodiscard]] std::optional<std::uint32_t> numberBehind(std::string_view prefix, std::string_view name);

} // namespace qk::platform::parse
