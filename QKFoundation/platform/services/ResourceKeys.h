// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The keys of `FileManager::resourceValuesForKeys`: literals, each of its own name.
namespace qk::platform {

// Of files. Kinds and dates are those of the file itself: the last symbolic link of a path is not followed. The rights
// are those of the effective user to what the path leads to.
inline constexpr char NSURLIsRegularFileKey[] = "NSURLIsRegularFileKey";   ///< boolean
inline constexpr char NSURLIsSymbolicLinkKey[] = "NSURLIsSymbolicLinkKey"; ///< boolean
inline constexpr char NSURLIsDirectoryKey[] = "NSURLIsDirectoryKey";       ///< boolean
inline constexpr char NSURLIsPackageKey[] = "NSURLIsPackageKey";       ///< boolean: a folder that is shown as one file
inline constexpr char NSURLIsVolumeKey[] = "NSURLIsVolumeKey";         ///< boolean: the root folder of a mounted volume
inline constexpr char NSURLIsHiddenKey[] = "NSURLIsHiddenKey";         ///< boolean
inline constexpr char NSURLIsReadableKey[] = "NSURLIsReadableKey";     ///< boolean
inline constexpr char NSURLIsWritableKey[] = "NSURLIsWritableKey";     ///< boolean
inline constexpr char NSURLIsExecutableKey[] = "NSURLIsExecutableKey"; ///< boolean
inline constexpr char NSURLContentModificationDateKey[] = "NSURLContentModificationDateKey"; ///< date
inline constexpr char NSURLContentAccessDateKey[] = "NSURLContentAccessDateKey";             ///< date
inline constexpr char NSURLCanonicalPathKey[] = "NSURLCanonicalPathKey"; ///< text: without symbolic links

// Of volumes, for the URL of their root folder.
inline constexpr char NSURLVolumeNameKey[] = "NSURLVolumeNameKey";                         ///< text
inline constexpr char NSURLVolumeIsInternalKey[] = "NSURLVolumeIsInternalKey";             ///< boolean
inline constexpr char NSURLVolumeIsEjectableKey[] = "NSURLVolumeIsEjectableKey";           ///< boolean
inline constexpr char NSURLVolumeIsRemovableKey[] = "NSURLVolumeIsRemovableKey";           ///< boolean
inline constexpr char NSURLVolumeURLForRemountingKey[] = "NSURLVolumeURLForRemountingKey"; ///< URL
inline constexpr char NSURLVolumeTotalCapacityKey[] = "NSURLVolumeTotalCapacityKey";       ///< bytes
inline constexpr char NSURLVolumeAvailableCapacityKey[] =
    "NSURLVolumeAvailableCapacityKey"; ///< bytes open to ordinary users

} // namespace qk::platform
