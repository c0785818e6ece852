// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSFileManager.h"
#include "QKFoundation/platform/values/NSURL.h"

/// `NSFileManager(FileProgress)`: the mark of files that are still being written, from which a file browser draws a
/// progress bar.
namespace qk::NSFileManager_FileProgress {

/// `showProgress:atURL:`. Marks the file as `progress` complete, a fraction from 0 to 1 that is not limited to them:
/// the extended attribute "com.apple.progress.fractionCompleted" holds it with six decimals, and the creation date is
/// 1984-01-24 08:00:00 UTC. A fraction that differs from 1 by less than the machine's epsilon removes the attribute and
/// sets the creation date to the present moment. Does nothing when the file is missing, or when its file system keeps
/// no attributes.
///
/// Deliberate: a file without any extended attribute gets no progress attribute, only the date. Linux: the attribute's
/// name has "user." in front of it, and the date is kept in "user.qk.creation-date" since a file's birth cannot be set;
/// no file browser there draws the mark.
///
/// Threads: any; of two that write progress on one file at the same time, the last one wins.
QK_EXPORT void showProgress(const NSFileManager& self, double progress, const NSURL& atURL);

} // namespace qk::NSFileManager_FileProgress
