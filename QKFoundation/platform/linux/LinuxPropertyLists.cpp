// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxPropertyLists.h"

#include "QKFoundation/platform/linux/PropertyList.h"

namespace qk::platform {

std::optional<Value> LinuxPropertyLists::propertyListWithData(const NSData& data,
                                                              NSPropertyListMutabilityOptions /*options*/) const {
    return propertyList(data.view());
}

std::optional<NSData> LinuxPropertyLists::dataWithPropertyList(const Value& /*value*/,
                                                               NSPropertyListFormat /*format*/) const {
    return std::nullopt;
}

} // namespace qk::platform
