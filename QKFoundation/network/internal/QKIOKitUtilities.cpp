// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKIOKitUtilities.h"

namespace qk {

NSString QKIOKitUtilities::stringPropertyForIOService(const Registry& registry, Entry entry, const NSString& key) {
    const std::optional<Value> property = registry.entryProperty(entry, key);
    const NSString* text = property.has_value() ? property->as<NSString>() : nullptr;
    return text != nullptr ? *text : NSString();
}

NSNumber QKIOKitUtilities::numberPropertyForIOService(const Registry& registry, Entry entry, const NSString& key) {
    const std::optional<Value> property = registry.entryProperty(entry, key);
    const NSNumber* number = property.has_value() ? property->as<NSNumber>() : nullptr;
    return number != nullptr && !number->isBoolean() ? *number : NSNumber(0);
}

bool QKIOKitUtilities::boolPropertyForIOService(const Registry& registry, Entry entry, const NSString& key) {
    const std::optional<Value> property = registry.entryProperty(entry, key);
    const NSNumber* number = property.has_value() ? property->as<NSNumber>() : nullptr;
    return number != nullptr && number->isBoolean() && number->boolValue();
}

std::int32_t QKIOKitUtilities::intPropertyForIOService(const Registry& registry, Entry entry, const NSString& key) {
    return numberPropertyForIOService(registry, entry, key).intValue();
}

std::int64_t QKIOKitUtilities::integerPropertyForIOService(const Registry& registry, Entry entry, const NSString& key) {
    return numberPropertyForIOService(registry, entry, key).integerValue();
}

} // namespace qk
