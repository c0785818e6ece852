// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDictionary+PropertyList.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

namespace qk {

using platform::NSPropertyListMutabilityOptions;

std::optional<Value> internal::propertyListAtPath(const platform::Services& services, const NSString& path,
                                                  NSPropertyListMutabilityOptions options) {
    const std::optional<NSData> data = services.fileManager->contentsAtPath(path);
    return data.has_value() ? services.propertyLists->propertyListWithData(*data, options) : std::nullopt;
}

namespace NSDictionary_PropertyList {

std::optional<Value> dictionaryWithData(const NSData& data, platform::NSPropertyListFormat /*format*/,
                                        NSPropertyListMutabilityOptions mutabilityOptions) {
    return platform::services()->propertyLists->propertyListWithData(data, mutabilityOptions);
}

std::optional<Value> dictionaryWithPropertyListAtPath(const NSString& path) {
    return internal::propertyListAtPath(*platform::services(), path, NSPropertyListMutabilityOptions::Immutable);
}

} // namespace NSDictionary_PropertyList
} // namespace qk
