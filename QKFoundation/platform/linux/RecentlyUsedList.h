// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {

/// The desktop toolkits' list of the files that were used last (recently-used.xbel): the most bytes of it that are
/// read, and the most entries. A list of a thousand files has half a megabyte.
inline constexpr std::size_t kRecentlyUsedListLimit = std::size_t{16} << 20U;
inline constexpr std::size_t kRecentlyUsedFilesLimit = 100'000;

/// A file of the list.
struct RecentlyUsedFile {
    std::string path;   ///< absolute, the bytes by which the kernel knows it, no trailing "/"
    double visited = 0; ///< seconds since 1970

    friend bool operator==(const RecentlyUsedFile&, const RecentlyUsedFile&) = default;
};

/// The files of this machine in such a list that tells when they were visited, in the order of the list. Empty when
/// `text` is none or malformed anywhere, and when it is larger than the limit.
[[nodiscard]] std::vector<RecentlyUsedFile> recentlyUsedFiles(std::string_view text);

} // namespace qk::platform
