// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <optional>
#include <vector>

/// `NSTask(Zip)`: packs folders and unpacks archives with the system's own tools, "/usr/bin/zip" and "/usr/bin/unzip".
///
/// Each operation raises `NSInvalidArgumentException` when its tool cannot be launched, because it is not installed for
/// example. Threads: any, at the same time. Each blocks its caller until the tool has ended.
namespace qk::NSTask_Zip {

/// `unzipFileAtPath:inDirectoryAtPath:`. Unpacks the archive `path` into the folder `inDirectoryAtPath`, which is made
/// first, with the folders above it, when it is not there. The names of all entries of that folder afterwards, in no
/// order and not recursive; nothing when an argument is nothing or the folder cannot be read.
///
/// Deliberate: the tool's exit status is not examined, so a damaged archive yields the names of whatever the folder
/// holds, and entries that were there before are named too. The tool runs in the target folder: a relative `path` is
/// looked up there.
[[nodiscard]] QK_EXPORT std::optional<std::vector<NSString>>
unzipFileAtPath(const std::optional<NSString>& path, const std::optional<NSString>& inDirectoryAtPath);

/// `unzipFileAtURL:inDirectoryAtURL:`. The same, for the paths of two URLs.
[[nodiscard]] QK_EXPORT std::optional<std::vector<NSString>>
unzipFileAtURL(const std::optional<NSURL>& url, const std::optional<NSURL>& inDirectoryAtURL);

/// `zipDirectoryAtPath:`. Packs the files below the folder `path` into an archive beside it, named as the folder with
/// the extension "zip" appended, and returns the archive's path; nothing when `path` is nothing or the tool fails.
///
/// Deliberate: the archive holds the files without their folder paths, so two files of one name in different folders
/// fail, and so does a folder without files; an archive that exists is updated, and entries whose files are gone stay.
[[nodiscard]] QK_EXPORT std::optional<NSString> zipDirectoryAtPath(const std::optional<NSString>& path);

} // namespace qk::NSTask_Zip
