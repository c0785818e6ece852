// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDictionary+Accessors.h"

namespace qk::NSDictionary_Accessors {

bool boolForKey(const NSDictionary& self, const NSString& key) {
    if (const auto* number = self.get<NSNumber>(key)) {
        return number->boolValue();
    }
    const auto* text = self.get<NSString>(key);
    return text != nullptr && text->boolValue();
}

std::uint64_t unsignedIntegerForKey(const NSDictionary& self, const NSString& key) {
    const auto* number = self.get<NSNumber>(key);
    return number != nullptr ? number->unsignedIntegerValue() : 0;
}

} // namespace qk::NSDictionary_Accessors
