// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSFileManager.h"

#include <optional>

/// `NSFileManager(ExtendedAttributes)`: what is attached to files, as text.
namespace qk::NSFileManager_ExtendedAttributes {

/// `extendedAttributeForName:atPath:`. The extended attribute `name` of the file at `path` as UTF-8 text, zero bytes
/// included. Nothing when the name or the path is empty, when there is no such file or attribute, when it has no bytes,
/// or when they are not UTF-8. Symbolic links are followed. Linux: the kernel's "user." and `name`. Threads: any, at
/// the same time.
[[nodiscard]] QK_EXPORT std::optional<NSString> extendedAttributeForName(const NSFileManager& self,
                                                                         const NSString& name, const NSString& atPath);

} // namespace qk::NSFileManager_ExtendedAttributes
