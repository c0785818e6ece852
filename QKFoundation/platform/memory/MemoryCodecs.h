// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

namespace qk::platform::memory {

/// The formats that need no library: the older text form of property lists, which is only read. Threads: any.
class QK_EXPORT TextPropertyLists final : public PropertyListSerialization {
public:
    [[nodiscard]] std::optional<Value> propertyListWithData(const NSData& data,
                                                            NSPropertyListMutabilityOptions options) const override;
    [[nodiscard]] std::optional<NSData> dataWithPropertyList(const Value& value,
                                                             NSPropertyListFormat format) const override;
};

/// A system without cryptography. Threads: any.
class QK_EXPORT NoCrypto final : public CommonCrypto {
public:
    [[nodiscard]] std::optional<SHA1Digest> SHA1(std::span<const std::byte> bytes) const override;
};

} // namespace qk::platform::memory
