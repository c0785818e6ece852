// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstddef>
#include <optional>
#include <string>

/// The attributes of a file that `FileManager` tells and sets. Paths and names are the kernel's bytes.
///
/// An extended attribute NAME is the kernel's "user.NAME"; its other name spaces (security, system, trusted) are not
/// shown. The kernel keeps the time of a file's birth and lets nobody set it, so a creation date that was set is kept
/// in "user.qk.creation-date", as seconds since 1970, which is not shown among the extended ones. Any thread.
namespace qk::platform::fileattributes {

/// Those of the file at `path`, a symbolic link itself: the creation date that was set, else the file's birth, where
/// the file system tells it; the extended ones when there are any. Nothing when there is no such file.
[[nodiscard]] std::optional<NSDictionary> read(const std::string& path);

/// Sets what `attributes` holds of them; only what differs is written. Whether all of it is set.
bool write(const std::string& path, const NSDictionary& attributes);

/// `FileManager::getxattr`.
[[nodiscard]] std::optional<std::size_t> extendedAttribute(const std::string& path, const std::string& name,
                                                           void* value, std::size_t size);

} // namespace qk::platform::fileattributes
