// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/values/NSString.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace qk::platform::internal {

/// Whether one of `keys` asks for a value of files, rather than of volumes or of nothing that is known.
[[nodiscard]] inline bool haveFileKey(const std::vector<NSString>& keys) {
    static const auto& known = *new std::unordered_set<NSString>{
        NSURLIsRegularFileKey, NSURLIsSymbolicLinkKey,    NSURLIsDirectoryKey,   NSURLIsPackageKey,
        NSURLIsVolumeKey,      NSURLIsHiddenKey,          NSURLIsReadableKey,    NSURLIsWritableKey,
        NSURLIsExecutableKey,  NSURLContentAccessDateKey, NSURLCanonicalPathKey, NSURLContentModificationDateKey};
    return std::ranges::any_of(keys, [](const NSString& key) { return known.contains(key); });
}

/// Whether one of `keys` asks for a value of volumes.
[[nodiscard]] inline bool haveVolumeKey(const std::vector<NSString>& keys) {
    return std::ranges::any_of(keys, [](const NSString& key) { return key.units().starts_with(u"NSURLVolume"); });
}

} // namespace qk::platform::internal
