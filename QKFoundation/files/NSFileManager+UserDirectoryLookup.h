// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSFileManager.h"
#include "QKFoundation/platform/services/SearchPaths.h"

/// `NSFileManager(UserDirectoryLookup)`: the user's standard folders, for a process of root those of the user at the
/// console.
namespace qk::NSFileManager_UserDirectoryLookup {

/// `userPathForDirectory:defaultName:`. The path of a standard folder of the user, whether it exists or not; where the
/// system lists none, `defaultName` ("Library/Caches") below the home folder.
///
/// In a process of root: the temporary folder itself when `useTemporaryDirectoryAsUserPath` is set; else, with a user
/// at the console, the folder of that user, or "/Users/NAME/" and `defaultName` when the process cannot become that
/// user; else root's own.
///
/// Threads: any; but while a process of root looks the user's folder up, it runs with that user's rights, all of its
/// threads. Look-ups wait for one another; work that needs root's rights must not run at the same time.
[[nodiscard]] QK_EXPORT NSString userPathForDirectory(const NSFileManager& self, NSSearchPathDirectory directory,
                                                      const NSString& defaultName);

/// `useTemporaryDirectoryAsUserPath`. Whether a process of root uses its temporary folder in the place of every folder
/// of the user; false until it is set. It belongs to this one manager. Threads: any, at the same time.
[[nodiscard]] QK_EXPORT bool useTemporaryDirectoryAsUserPath(const NSFileManager& self);

/// `setUseTemporaryDirectoryAsUserPath:`.
QK_EXPORT void setUseTemporaryDirectoryAsUserPath(NSFileManager& self, bool use);

} // namespace qk::NSFileManager_UserDirectoryLookup
