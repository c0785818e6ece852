// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSString.h"

#include <vector>

namespace qk {

/// `QKUTIUtils`: the uniform type identifiers of files, by their extensions, and what the system knows about them.
///
/// Extensions are given without their dot. Linux: the types are those that the platform itself declares; an extension
/// that only the shared MIME database knows has a dynamic identifier ("dyn.a..."); descriptions are English.
/// Threads: any, at the same time.
class QK_EXPORT QKUTIUtils {
public:
    QKUTIUtils() = delete;

    /// `typeIdentifierForPathExtension:`. The preferred type of files with that extension; "" when there is none.
    [[nodiscard]] static NSString typeIdentifierForPathExtension(const NSString& extension);

    /// `typeIdentifiersForPathExtension:`. All types of files with that extension; empty when there is none.
    [[nodiscard]] static std::vector<NSString> typeIdentifiersForPathExtension(const NSString& extension);

    /// `typeIdentifierWithPathExtension:conformsToOtherTypeIdentifier:`. Whether the preferred type of files with that
    /// extension is the other type or conforms to it; false when the extension has no type.
    [[nodiscard]] static bool typeIdentifierWithPathExtension(const NSString& extension,
                                                              const NSString& conformsToOtherTypeIdentifier);

    /// `typeIdentifier:conformsToOtherTypeIdentifier:`. Whether a type is the other one or conforms to it, over any
    /// number of steps, whatever the letter case. A type that nobody declared conforms to itself alone.
    [[nodiscard]] static bool typeIdentifier(const NSString& identifier, const NSString& conformsToOtherTypeIdentifier);

    /// `typeDescriptionForTypeIdentifier:`. What people call the type; "" when it has no description.
    [[nodiscard]] static NSString typeDescriptionForTypeIdentifier(const NSString& identifier);

    /// `typeDeclarationForTypeIdentifier:`. How the type was declared ("UTTypeIdentifier", "UTTypeConformsTo" and so
    /// on); empty when it was not.
    [[nodiscard]] static NSDictionary typeDeclarationForTypeIdentifier(const NSString& identifier);
};

} // namespace qk
