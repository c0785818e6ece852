// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/Descriptions.h"

namespace qk::internal {

NSString blockDescription(const NSObject& object, const NSDictionary& values, const std::vector<NSString>& keys) {
    NSMutableString text;
    text.append(object.NSObject::description()).append(u"{\n");
    for (const NSString& key : keys) {
        text.append(key).append(u" = ").append(values.objectForKey(key)->description()).append(u"\n");
    }
    return text.append(u"}").copy();
}

NSString blockDescription(const NSObject& object, const std::vector<NSString>& keys) {
    const NSDictionary values = object.dictionaryWithValuesForKeys(keys);
    return blockDescription(object, values, values.allKeys());
}

NSString dictionaryDescription(const NSObject& object, const std::vector<NSString>& keys) {
    return object.NSObject::description() + Value(object.dictionaryWithValuesForKeys(keys)).description();
}

} // namespace qk::internal
