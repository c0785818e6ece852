// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSFileManager.h"

#include <optional>

/// `NSFileManager(CachesPath)`: the folder for what the application can make again.
namespace qk::NSFileManager_CachesPath {

/// `cachesPath`. The folder named as the main bundle in the user's folder for caches; nothing without a main bundle.
/// Nothing makes it. Linux: in $XDG_CACHE_HOME, else "~/.cache". Threads: any; see
/// `NSFileManager(UserDirectoryLookup)` for processes of root.
[[nodiscard]] QK_EXPORT std::optional<NSString> cachesPath(const NSFileManager& self);

} // namespace qk::NSFileManager_CachesPath
