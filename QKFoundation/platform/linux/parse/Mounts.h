// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qk::platform::parse {

/// A line of /proc/self/mountinfo. Paths are the system's bytes, with their octal escapes taken out.
struct Mount {
    std::string device; ///< "major:minor" of the file system
    std::string root;   ///< the folder of the file system that is mounted: "/", or another one for a bind mount
    std::string path;   ///< where it is mounted
    std::string type;   ///< "ext4", "nfs4"
    std::string source; ///< "/dev/vda1", "host:/path"
    std::string superOptions;

    [[nodiscard]] friend bool operator==(const Mount&, const Mount&) = default;
};

/// The mounts in the file's order, which is that of mounting. Damaged lines are left out.
[[nodiscard]] std::vector<Mount> mounts(std::string_view mountInfo);

/// The paths that /run/mount/utab marks with the option "x-gvfs-hide".
[[nodiscard]] std::vector<std::string> hiddenMounts(std::string_view userTable);

/// Whether `option`, which may be a name with its value, is one of the options between commas.
[[nodiscard]] bool hasOption(std::string_view options, std::string_view option);

/// The value behind `key` ("E:ID_FS_LABEL=") on a line of its own, as the device database writes it; empty when there
/// is none.
[[nodiscard]] std::string_view deviceProperty(std::string_view record, std::string_view key);

} // namespace qk::platform::parse
