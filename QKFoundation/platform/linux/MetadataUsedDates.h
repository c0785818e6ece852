// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/MetadataContentTypes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::platform {

/// When files were used last, by the list that the desktop's toolkits keep. Threads: read anywhere at the same time;
/// `read` alone.
class MetadataUsedDates {
public:
    using Folder = TextMap<double>; ///< seconds since 1970 by name

    /// `root` stands before the paths of the list, without a trailing "/".
    MetadataUsedDates(std::string file, std::string root) : file_(std::move(file)), root_(std::move(root)) {}

    /// Reads the list again when it has changed. The paths of which it now tells something else.
    std::vector<std::string> read();

    /// The files of that folder; null when the list has none.
    [[nodiscard]] const Folder* folder(std::string_view path) const;

    /// When the file was used last; nothing when the list does not tell.
    [[nodiscard]] std::optional<double> dateOf(std::string_view path) const;

private:
    struct Version {
        std::uint64_t inode;
        std::uint64_t size;
        std::int64_t seconds;
        std::uint32_t nanoseconds;
        friend bool operator==(const Version&, const Version&) = default;
    };

    [[nodiscard]] std::optional<Version> version() const;

    std::string file_;
    std::string root_;
    std::optional<Version> known_;
    TextMap<Folder> folders_;
};

} // namespace qk::platform
