// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/services/NSFileManager.h"

#include <memory>
#include <optional>

/// `NSFileManager(ApplicationSupportPath)`: the folders that an application keeps its data in, named as the
/// application. Nothing here makes them, but for the folder of all applications. Threads: any; see
/// `NSFileManager(UserDirectoryLookup)` for processes of root.
namespace qk::NSFileManager_ApplicationSupportPath {

/// `applicationSupportPathWithBundle:`. The bundle's folder in the user's folder for application data; nothing without
/// a bundle. Linux: in $XDG_DATA_HOME, else "~/.local/share".
[[nodiscard]] QK_EXPORT std::optional<NSString>
applicationSupportPathWithBundle(const NSFileManager& self, const std::shared_ptr<NSBundle>& bundle);

/// `systemApplicationSupportPathWithBundle:`. The bundle's folder in everybody's folder for application data, which is
/// made when it is missing; nothing when it cannot be made, and without a bundle. Linux: in "/var/lib".
[[nodiscard]] QK_EXPORT std::optional<NSString>
systemApplicationSupportPathWithBundle(const NSFileManager& self, const std::shared_ptr<NSBundle>& bundle);

/// `applicationSupportPath`. The first one of the main bundle.
[[nodiscard]] QK_EXPORT std::optional<NSString> applicationSupportPath(const NSFileManager& self);

/// `systemApplicationSupportPath`. The second one of the main bundle.
[[nodiscard]] QK_EXPORT std::optional<NSString> systemApplicationSupportPath(const NSFileManager& self);

/// `displayNameForBundle:`. What the bundle's information list says under "CFBundleDisplayName" in the user's language,
/// also an empty text; else the name of its folder as people are shown it, without its extension. Nothing without a
/// bundle.
[[nodiscard]] QK_EXPORT std::optional<NSString> displayNameForBundle(const NSFileManager& self,
                                                                     const std::shared_ptr<NSBundle>& bundle);

} // namespace qk::NSFileManager_ApplicationSupportPath
