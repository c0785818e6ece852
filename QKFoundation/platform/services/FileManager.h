// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/SearchPaths.h"
#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace qk::platform {

/// `NSDirectoryEnumerationOptions`: what an enumeration leaves out; they add up.
using NSDirectoryEnumerationOptions = std::uint64_t;
inline constexpr NSDirectoryEnumerationOptions NSDirectoryEnumerationSkipsSubdirectoryDescendants = 1;
inline constexpr NSDirectoryEnumerationOptions NSDirectoryEnumerationSkipsPackageDescendants = 2;
inline constexpr NSDirectoryEnumerationOptions NSDirectoryEnumerationSkipsHiddenFiles = 4;

/// One item that an enumeration came by: its file URL, which ends with "/" when it is a folder, and its values for the
/// keys that were asked for.
struct EnumeratedItem {
    NSURL url;
    NSDictionary resourceValues;
};

/// Files and folders. Threads: any, at the same time.
class QK_EXPORT FileManager {
public:
    FileManager() = default;
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    virtual ~FileManager();

    /// `createDirectoryAtPath:withIntermediateDirectories:attributes:error:`. Makes a folder, with the folders above it
    /// when asked to. True when the folder is there afterwards; an existing one counts only when the folders above are
    /// asked for.
    virtual bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) = 0;

    /// `fileExistsAtPath:isDirectory:`. Whether `path` leads to a file or, through any symbolic links, a folder, which
    /// `isDirectory` is told when it is not null.
    [[nodiscard]] virtual bool fileExistsAtPath(const NSString& path, bool* isDirectory = nullptr) const = 0;

    /// `contentsAtPath:`. The bytes of a file; nothing when `path` is no file or cannot be read.
    [[nodiscard]] virtual std::optional<NSData> contentsAtPath(const NSString& path) const = 0;

    /// `contentsOfDirectoryAtPath:error:`. The names of a folder's entries, "." and ".." left out, in no order; nothing
    /// when `path` is no folder or cannot be read. A name that is not UTF-8 is kept: each byte that is malformed stands
    /// as the lone surrogate U+DC00 + byte, which this interface's calls turn back.
    [[nodiscard]] virtual std::optional<std::vector<NSString>>
    contentsOfDirectoryAtPath(const NSString& path) const = 0;

    /// `dictionaryWithContentsOfFile:`. The dictionary that the property list in the file holds (XML or binary);
    /// nothing when the file cannot be read or holds something else. "/System/Library/CoreServices/SystemVersion.plist"
    /// describes the operating system on every host.
    [[nodiscard]] virtual std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const = 0;

    /// `mountedVolumeURLsIncludingResourceValuesForKeys:options:`. The file URLs of the roots of all mounted volumes,
    /// in the system's own order; without those that are hidden from people when `skipHiddenVolumes`.
    [[nodiscard]] virtual std::vector<NSURL> mountedVolumeURLs(bool skipHiddenVolumes) const = 0;

    /// `resourceValuesForKeys:error:`. The values of `keys` for the file or volume at `url`, without the keys that it
    /// has no value for; nothing when it cannot be asked, because it is gone for example, and when only values of
    /// volumes are wanted of what is none. The keys are those of "ResourceKeys.h".
    [[nodiscard]] virtual std::optional<NSDictionary>
    resourceValuesForKeys(const NSURL& url, const std::vector<NSString>& keys) const = 0;

    /// `enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:`. What is in the folder at `url` and, unless
    /// the options leave that out, below it: a folder before its content, the items of one folder ascending by name.
    /// Symbolic links are not followed. There is no error handler: what cannot be read, is gone meanwhile, or has a
    /// name that no URL can hold is left out. Empty when `url` is no folder.
    [[nodiscard]] std::vector<EnumeratedItem> enumeratorAtURL(const NSURL& url,
                                                              const std::vector<NSString>& includingPropertiesForKeys,
                                                              NSDirectoryEnumerationOptions options) const;

    /// `NSHomeDirectory`. The home folder of the effective user: what "~" stands for. "/" for a user who has none.
    [[nodiscard]] virtual NSString homeDirectory() const = 0;

    /// `NSTemporaryDirectory`. The folder for temporary files of this process, without a trailing "/".
    [[nodiscard]] virtual NSString temporaryDirectory() const = 0;

    /// `NSSearchPathForDirectoriesInDomains` with the tilde expanded. The paths of a standard folder, the preferred one
    /// first, whether they exist or not; those of the user are the effective user's. Empty when the system has no such
    /// folder.
    [[nodiscard]] virtual std::vector<NSString> searchPaths(NSSearchPathDirectory directory,
                                                            NSSearchPathDomainMask domain) const = 0;

    /// `displayNameAtPath:`. The name of a file as people are shown it, whether it exists or not.
    [[nodiscard]] virtual NSString displayNameAtPath(const NSString& path) const = 0;

    /// `attributesOfItemAtPath:error:`. The attributes of the file at `path` that "FileAttributeKeys.h" names, without
    /// those that it has not got; nothing when there is no such file. A symbolic link is asked itself.
    [[nodiscard]] virtual std::optional<NSDictionary> attributesOfItemAtPath(const NSString& path) const = 0;

    /// `setAttributes:ofItemAtPath:error:`. Sets the attributes that `attributes` holds under keys of
    /// "FileAttributeKeys.h": the extended ones are those given afterwards, and no others. Other keys, and values of
    /// another kind, are left out. Whether all was set.
    virtual bool setAttributes(const NSDictionary& attributes, const NSString& ofItemAtPath) = 0;

    /// `getxattr`. Copies the value of the extended attribute `name` to `value`, which has room for `size` bytes, and
    /// returns its length; with a null `value` it only tells the length. Nothing when there is no such file or
    /// attribute, for a file system without attributes, and when the room is too small. Symbolic links are followed.
    [[nodiscard]] virtual std::optional<std::size_t> getxattr(const NSString& path, const NSString& name, void* value,
                                                              std::size_t size) const = 0;
};

} // namespace qk::platform
