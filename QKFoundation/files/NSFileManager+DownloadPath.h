// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/files/QKDownloadPath.h"
#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSFileManager.h"

/// `NSFileManager(DownloadPath)`: the folder for what the user fetches.
namespace qk::NSFileManager_DownloadPath {

/// `downloadPath`. The folder for downloads of the user that the process runs as, whether it exists or not; "Downloads"
/// below the home folder where the system lists none. Deliberate: a process of root gets root's folder, whoever is at
/// the console. Linux: XDG_DOWNLOAD_DIR of user-dirs.dirs. Threads: any, at the same time.
[[nodiscard]] QK_EXPORT NSString downloadPath(const NSFileManager& self);

} // namespace qk::NSFileManager_DownloadPath
