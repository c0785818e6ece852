// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/NSDictionary+DynamicStore.h"

namespace qk::NSDictionary_DynamicStore {

bool boolValueForDynamicStoreKey(const NSDictionary& self, const NSString& key) {
    const auto* number = self.get<NSNumber>(key);
    return number != nullptr && number->boolValue();
}

NSString stringValueForDynamicStoreKey(const NSDictionary& self, const NSString& key) {
    const auto* text = self.get<NSString>(key);
    return text != nullptr ? *text : NSString();
}

NSArray stringArrayValueForDynamicStoreKey(const NSDictionary& self, const NSString& key) {
    const auto* array = self.get<NSArray>(key);
    return array != nullptr ? *array : NSArray();
}

} // namespace qk::NSDictionary_DynamicStore
