// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+CachesPath.h"
#include "QKFoundation/files/internal/StandardPaths.h"

namespace qk {

std::optional<NSString> internal::cachesPath(const platform::Services& services, const NSFileManager& self) {
    const std::optional<NSString> name = displayNameForBundle(services, NSBundle::mainBundle(services));
    if (!name.has_value()) {
        return std::nullopt;
    }
    return userPathForDirectory(services, self, NSSearchPathDirectory::NSCachesDirectory, "Library/Caches")
        .stringByAppendingPathComponent(*name);
}

std::optional<NSString> NSFileManager_CachesPath::cachesPath(const NSFileManager& self) {
    return internal::cachesPath(*platform::services(), self);
}

} // namespace qk
