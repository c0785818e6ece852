// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

namespace qk::platform {

/// Which file it is and when it changed last (stat(2)). Two looks that find the same have found the same content, if
/// that was settled at the first one.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modified = 0; ///< st_mtim, in nanoseconds since 1970
    std::int64_t changed = 0;  ///< st_ctim, which nobody can set

    [[nodiscard]] static FileIdentity of(const struct stat& status);

    /// Of the file at `path`, links followed; nothing where there is none.
    [[nodiscard]] static std::optional<FileIdentity> at(const std::string& path);

    /// Whether the next change is sure to bear another time: at `now`, nanoseconds since 1970, the last one is longer
    /// ago than the coarsest clock of a file system ticks.
    [[nodiscard]] bool isSettled(std::int64_t now) const noexcept;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

} // namespace qk::platform
