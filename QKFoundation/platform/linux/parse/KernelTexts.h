// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qk::platform::parse {

/// "MemTotal" of /proc/meminfo, in bytes.
[[nodiscard]] std::optional<std::uint64_t> memoryTotal(std::string_view meminfo);

/// "btime" of /proc/stat: the start of the system, seconds since 1970.
[[nodiscard]] std::optional<std::int64_t> bootTime(std::string_view stat);

/// A file that holds one number and its line feed, such as cpuinfo_max_freq (decimal) or block_size_bytes
/// (hexadecimal).
[[nodiscard]] std::optional<std::uint64_t> singleNumber(std::string_view content, int base = 10);

/// A file that holds one text, ended by a line feed (/proc, /sys) or a zero byte (device tree); the end is left out.
/// Nothing when the text is empty or all white space.
[[nodiscard]] std::optional<std::string> singleText(std::string_view content);

} // namespace qk::platform::parse
