// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/PropertyListSerialization.h"

namespace qk::platform {

/// Property lists through libplist, and the older text form. Threads: any, at the same time.
class LinuxPropertyLists final : public PropertyListSerialization {
public:
    [[nodiscard]] std::optional<Value> propertyListWithData(const NSData& data,
                                                            NSPropertyListMutabilityOptions options) const override;
    [[nodiscard]] std::optional<NSData> dataWithPropertyList(const Value& value,
                                                             NSPropertyListFormat format) const override;
};

} // namespace qk::platform
