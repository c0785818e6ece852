// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <vector>

namespace qk::platform {

/// The uniform type identifiers that the system knows. Threads: any, at the same time.
class QK_EXPORT UniformTypes {
public:
    UniformTypes() = default;
    UniformTypes(const UniformTypes&) = delete;
    UniformTypes& operator=(const UniformTypes&) = delete;
    virtual ~UniformTypes();

    /// `UTTypeConformsTo`. Whether `type` is `conformsTo` or one that conforms to it, over any number of steps. Letter
    /// case makes no difference. An identifier that nobody declared conforms to itself alone.
    [[nodiscard]] virtual bool typeConformsTo(const NSString& type, const NSString& conformsTo) const = 0;

    /// `UTTypeCreateAllIdentifiersForTag`, of the tag class of file-name extensions and without a restriction. The
    /// types of files with that extension, without its dot and in any letter case;
    /// `UTTypeCreatePreferredIdentifierForTag` is the first of them. Empty when the system knows no such files.
    [[nodiscard]] virtual std::vector<NSString> typesForExtension(const NSString& extension) const = 0;

    /// `UTTypeCopyDescription`. What people call the type; nothing when it was not declared or has no description.
    [[nodiscard]] virtual std::optional<NSString> descriptionOfType(const NSString& type) const = 0;

    /// `UTTypeCopyDeclaration`. How the type was declared: "UTTypeIdentifier", and where there are any,
    /// "UTTypeDescription", "UTTypeConformsTo" (an array) and "UTTypeTagSpecification" (a dictionary with the arrays
    /// "public.filename-extension" and "public.mime-type"). Nothing when it was not declared.
    [[nodiscard]] virtual std::optional<NSDictionary> declarationOfType(const NSString& type) const = 0;
};

} // namespace qk::platform
