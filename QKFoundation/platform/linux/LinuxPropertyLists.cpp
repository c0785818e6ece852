// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxPropertyLists.h"

#include "QKFoundation/platform/linux/PropertyList.h"
#include "QKFoundation/platform/linux/PropertyListWriting.h"
#include "QKFoundation/platform/values/OldStylePropertyList.h"

namespace qk::platform {

std::optional<Value> LinuxPropertyLists::propertyListWithData(const NSData& data,
                                                              NSPropertyListMutabilityOptions /*options*/) const {
    if (std::optional<Value> list = propertyList(data.view())) {
        return list;
    }
    return data.view().starts_with("bplist00") ? std::nullopt : internal::oldStylePropertyList(data.view());
}

std::optional<NSData> LinuxPropertyLists::dataWithPropertyList(const Value& value, NSPropertyListFormat format) const {
    return dataOfPropertyList(value, format);
}

} // namespace qk::platform
