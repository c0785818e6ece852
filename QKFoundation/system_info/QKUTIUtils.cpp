// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKUTIUtils.h"

#include "QKFoundation/system_info/internal/TypeIdentifiers.h"

namespace qk {

using platform::services;

NSString internal::typeIdentifierForPathExtension(const platform::Services& services, const NSString& extension) {
    const std::vector<NSString> types = services.uniformTypes->typesForExtension(extension);
    return types.empty() ? NSString() : types.front();
}

bool internal::typeIdentifierWithPathExtension(const platform::Services& services, const NSString& extension,
                                               const NSString& conformsToOtherTypeIdentifier) {
    const NSString identifier = typeIdentifierForPathExtension(services, extension);
    return !identifier.isEmpty() && services.uniformTypes->typeConformsTo(identifier, conformsToOtherTypeIdentifier);
}

NSString QKUTIUtils::typeIdentifierForPathExtension(const NSString& extension) {
    return internal::typeIdentifierForPathExtension(*services(), extension);
}

std::vector<NSString> QKUTIUtils::typeIdentifiersForPathExtension(const NSString& extension) {
    return services()->uniformTypes->typesForExtension(extension);
}

bool QKUTIUtils::typeIdentifierWithPathExtension(const NSString& extension,
                                                 const NSString& conformsToOtherTypeIdentifier) {
    return internal::typeIdentifierWithPathExtension(*services(), extension, conformsToOtherTypeIdentifier);
}

bool QKUTIUtils::typeIdentifier(const NSString& identifier, const NSString& conformsToOtherTypeIdentifier) {
    return services()->uniformTypes->typeConformsTo(identifier, conformsToOtherTypeIdentifier);
}

NSString QKUTIUtils::typeDescriptionForTypeIdentifier(const NSString& identifier) {
    return services()->uniformTypes->descriptionOfType(identifier).value_or(NSString());
}

NSDictionary QKUTIUtils::typeDeclarationForTypeIdentifier(const NSString& identifier) {
    return services()->uniformTypes->declarationOfType(identifier).value_or(NSDictionary());
}

} // namespace qk
