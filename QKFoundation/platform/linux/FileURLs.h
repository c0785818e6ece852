// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSURL.h"

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform {

/// The file URL of the folder with these bytes as its absolute path, whatever they are.
[[nodiscard]] NSURL folderURL(std::string_view path);

/// The URL of a file system on another machine: "nfs://host/path", "smb://host/share". Nothing for a type that is none
/// of them.
[[nodiscard]] std::optional<NSURL> remountURL(std::string_view type, std::string_view source);

/// Whether file systems of that type are on another machine.
[[nodiscard]] bool isRemoteType(std::string_view type);

} // namespace qk::platform
