// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+ExtendedAttributes.h"
#include "QKFoundation/files/internal/FileNames.h"

#include <string>

namespace qk {

std::optional<NSString> internal::extendedAttributeForName(const platform::Services& services, const NSString& name,
                                                           const NSString& atPath) {
    if (name.isEmpty() || atPath.isEmpty()) {
        return std::nullopt;
    }
    const platform::FileManager& files = *services.fileManager;
    const std::size_t size = files.getxattr(atPath, name, nullptr, 0).value_or(0);
    if (size == 0) {
        return std::nullopt;
    }
    // Zeroed, and decoded whole: an attribute that has become shorter meanwhile has zero bytes behind it.
    std::string bytes(size, '\0');
    static_cast<void>(files.getxattr(atPath, name, bytes.data(), bytes.size()));
    return NSString::fromUTF8(bytes);
}

std::optional<NSString> NSFileManager_ExtendedAttributes::extendedAttributeForName(const NSFileManager& /*self*/,
                                                                                   const NSString& name,
                                                                                   const NSString& atPath) {
    return internal::extendedAttributeForName(*platform::services(), name, atPath);
}

} // namespace qk
