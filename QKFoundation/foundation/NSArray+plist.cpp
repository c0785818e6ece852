// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSArray+plist.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

namespace qk {

using platform::NSPropertyListFormat;
using platform::NSPropertyListMutabilityOptions;

std::optional<NSString> internal::plistRepresentation(const platform::Services& services, const NSArray& array) {
    const std::optional<NSData> data =
        services.propertyLists->dataWithPropertyList(array, NSPropertyListFormat::XML_v1_0);
    return data.has_value() ? NSString::fromUTF8(data->view()) : std::nullopt;
}

std::optional<NSArray> internal::arrayForPlistRepresentation(const platform::Services& services,
                                                             const NSString& string) {
    const std::optional<Value> list = services.propertyLists->propertyListWithData(
        NSData(string.utf8Lossy()), NSPropertyListMutabilityOptions::Immutable);
    const NSArray* array = list.has_value() ? list->as<NSArray>() : nullptr;
    return array != nullptr ? std::optional(*array) : std::nullopt;
}

std::optional<NSString> NSArray_plist::plistRepresentation(const NSArray& self) {
    return internal::plistRepresentation(*platform::services(), self);
}

std::optional<NSArray> NSArray_plist::arrayForPlistRepresentation(const NSString& string) {
    return internal::arrayForPlistRepresentation(*platform::services(), string);
}

} // namespace qk
