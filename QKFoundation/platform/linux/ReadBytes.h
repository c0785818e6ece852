// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace qk::platform {

/// More than any file that describes the system holds; /proc/cpuinfo takes about 1.5 kB for each processor.
inline constexpr std::size_t kReadLimit = std::size_t{16} << 20U;

/// The whole content of a file. Nothing when it cannot be read or holds more than `limit` bytes. Never waits: a pipe
/// that nobody writes to reads as it stands. Any thread.
[[nodiscard]] std::optional<std::string> readBytes(const std::string& path, std::size_t limit = kReadLimit);

/// The names of a folder's entries, "." and ".." left out, in no order. Nothing when it is no folder or cannot be
/// read to its end. Any thread.
[[nodiscard]] std::optional<std::vector<std::string>> readDirectory(const std::string& path);

} // namespace qk::platform
