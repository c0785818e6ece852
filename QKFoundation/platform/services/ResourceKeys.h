// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The keys of `FileManager::resourceValuesForKeys`: literals, each of its own name.
namespace qk::platform {

inline constexpr char NSURLVolumeNameKey[] = "NSURLVolumeNameKey";                         ///< text
inline constexpr char NSURLVolumeIsInternalKey[] = "NSURLVolumeIsInternalKey";             ///< boolean
inline constexpr char NSURLVolumeIsEjectableKey[] = "NSURLVolumeIsEjectableKey";           ///< boolean
inline constexpr char NSURLVolumeIsRemovableKey[] = "NSURLVolumeIsRemovableKey";           ///< boolean
inline constexpr char NSURLVolumeURLForRemountingKey[] = "NSURLVolumeURLForRemountingKey"; ///< URL
inline constexpr char NSURLVolumeTotalCapacityKey[] = "NSURLVolumeTotalCapacityKey";       ///< bytes
inline constexpr char NSURLVolumeAvailableCapacityKey[] =
    "NSURLVolumeAvailableCapacityKey"; ///< bytes open to ordinary users

} // namespace qk::platform
