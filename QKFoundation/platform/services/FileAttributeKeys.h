// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The keys of `FileManager::attributesOfItemAtPath` and `setAttributes`: literals, each of its own name.
namespace qk::platform {

inline constexpr char NSFileCreationDate[] = "NSFileCreationDate"; ///< date
inline constexpr char NSFileExtendedAttributes[] =
    "NSFileExtendedAttributes"; ///< dictionary: data by name, never empty

} // namespace qk::platform
