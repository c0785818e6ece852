// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/internal/KeyPaths.h"

#include "QKFoundation/platform/objects/NSException.h"

#include <span>
#include <utility>
#include <vector>

namespace qk::internal {
namespace {

std::optional<Value> valueForKey(const Value& value, const NSString& key);

Value valuesForKey(const NSArray& array, const NSString& key) {
    std::vector<Value> values;
    values.reserve(array.count());
    for (const Value& element : array) {
        values.push_back(valueForKey(element, key).value_or(NSNull{}));
    }
    return NSArray(std::move(values));
}

std::optional<Value> valueForKey(const Value& value, const NSString& key) {
    if (value.isNull()) {
        return std::nullopt;
    }
    if (const auto object = value.asObject<NSObject>()) {
        return object->valueForKey(key);
    }
    if (const auto* dictionary = value.as<NSDictionary>()) {
        const Value* entry = dictionary->objectForKey(key);
        return entry != nullptr ? std::optional(*entry) : std::nullopt;
    }
    if (const auto* array = value.as<NSArray>()) {
        return valuesForKey(*array, key);
    }
    throw NSUndefinedKeyException(key, "a value without keys was asked for the key " + key);
}

std::optional<Value> itself(const NSObject& object) {
    // The values that a condition sees are read alone, so that the constness of the object is kept.
    const auto shared = std::const_pointer_cast<NSObject>(object.weak_from_this().lock());
    return shared != nullptr ? std::optional<Value>(shared) : std::nullopt;
}

} // namespace

std::optional<Value> valueForKeyPath(const NSObject& object, const NSString& keyPath) {
    static const NSString& self = *new NSString("SELF");
    static const NSString& dot = *new NSString(".");
    if (keyPath == self) {
        return itself(object);
    }
    if (!keyPath.contains(dot.units())) {
        return object.valueForKey(keyPath);
    }
    const std::vector<NSString> keys = keyPath.componentsSeparatedByString(dot);
    std::optional<Value> value = object.valueForKey(keys.front());
    for (const NSString& key : std::span(keys).subspan(1)) {
        if (!value.has_value()) {
            break;
        }
        value = valueForKey(*value, key);
    }
    return value;
}

} // namespace qk::internal
