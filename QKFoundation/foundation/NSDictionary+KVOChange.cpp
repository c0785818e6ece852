// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDictionary+KVOChange.h"

#include <cstdint>

namespace qk::NSDictionary_KVOChange {
namespace {

std::optional<Value> withoutNull(const NSDictionary& change, const NSString& key) {
    const Value* value = change.objectForKey(key);
    return value != nullptr && !value->isNull() ? std::optional(*value) : std::nullopt;
}

} // namespace

NSKeyValueChange keyValueChangeKind(const NSDictionary& self) {
    const auto* kind = self.get<NSNumber>(NSKeyValueChangeKindKey);
    return static_cast<NSKeyValueChange>(std::uint64_t{kind != nullptr ? kind->unsignedIntValue() : 0});
}

std::optional<Value> keyValueChangeOld(const NSDictionary& self) {
    return withoutNull(self, NSKeyValueChangeOldKey);
}

std::optional<Value> keyValueChangeNew(const NSDictionary& self) {
    return withoutNull(self, NSKeyValueChangeNewKey);
}

} // namespace qk::NSDictionary_KVOChange
