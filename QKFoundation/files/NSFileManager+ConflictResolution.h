// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSFileManager.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <optional>

/// `NSFileManager(ConflictResolution)`: names for new files.
namespace qk::NSFileManager_ConflictResolution {

/// `availableFileURLWithName:pathExtension:atURL:`. The URL of a file in the folder `atURL` that does not exist yet:
/// "report.txt", else the first one that is free of "report 2.txt", "report 3.txt" and so on. Without an extension when
/// `pathExtension` is empty. A folder's URL that has no path is returned as it is; nothing when the name or the
/// extension cannot stand in a URL, because it holds a lone surrogate.
///
/// A symbolic link that leads nowhere does not exist, so its name is free. A number that the name ends with already is
/// a part of it: "report 2" becomes "report 2 2". The name is not checked: "/" and ".." in it lead elsewhere, so a name
/// from another machine is reduced to its last component first. Another program may take the name before the caller
/// does: open it so that it must be new. Threads: any, at the same time.
[[nodiscard]] QK_EXPORT std::optional<NSURL> availableFileURLWithName(const NSFileManager& self, const NSString& name,
                                                                      const NSString& pathExtension,
                                                                      const NSURL& atURL);

} // namespace qk::NSFileManager_ConflictResolution
