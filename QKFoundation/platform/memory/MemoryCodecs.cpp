// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryCodecs.h"

#include "QKFoundation/platform/values/OldStylePropertyList.h"

namespace qk::platform::memory {

std::optional<Value> TextPropertyLists::propertyListWithData(const NSData& data,
                                                             NSPropertyListMutabilityOptions /*options*/) const {
    // A damaged binary list is not the word that it begins with.
    return data.view().starts_with("bplist00") ? std::nullopt : internal::oldStylePropertyList(data.view());
}

std::optional<NSData> TextPropertyLists::dataWithPropertyList(const Value& /*value*/,
                                                              NSPropertyListFormat /*format*/) const {
    return std::nullopt;
}

std::optional<CommonCrypto::SHA1Digest> NoCrypto::SHA1(std::span<const std::byte> /*bytes*/) const {
    return std::nullopt;
}

} // namespace qk::platform::memory
