// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <optional>
#include <string>
#include <vector>

/// The values of files that `FileManager::resourceValuesForKeys` tells.
///
/// A name with a leading dot is hidden. There are no packages. The access date is the kernel's, which a file system
/// that is mounted with "relatime", as usual, moves at most once a day unless the file was modified since, and one with
/// "noatime" never. A volume is what the kernel calls the root of a mount, bind mounts included.
namespace qk::platform::fileresources {

/// Those of `keys` for the file that the system calls `path`; other keys are left out. Nothing when it is not there or
/// cannot be looked at. One call of the kernel for all kinds and dates, and one for each right. Any thread.
[[nodiscard]] std::optional<NSDictionary> read(const LinuxRoot& root, const std::string& path,
                                               const std::vector<NSString>& keys);

} // namespace qk::platform::fileresources
