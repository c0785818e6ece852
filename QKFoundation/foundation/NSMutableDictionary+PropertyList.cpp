// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSMutableDictionary+PropertyList.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

namespace qk::NSMutableDictionary_PropertyList {

using platform::NSPropertyListMutabilityOptions;

std::optional<Value> dictionaryWithData(const NSData& data, platform::NSPropertyListFormat /*format*/,
                                        NSPropertyListMutabilityOptions mutabilityOptions) {
    return platform::services()->propertyLists->propertyListWithData(data, mutabilityOptions);
}

std::optional<Value> dictionaryWithPropertyListAtPath(const NSString& path) {
    return internal::propertyListAtPath(*platform::services(), path,
                                        NSPropertyListMutabilityOptions::MutableContainers);
}

} // namespace qk::NSMutableDictionary_PropertyList
