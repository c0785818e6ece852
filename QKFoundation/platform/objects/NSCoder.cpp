// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSCoder.h"

namespace qk {

std::optional<Value> NSCoder::decodeObjectForKey(const NSString& key) const {
    const Value* value = values_.objectForKey(key);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

} // namespace qk
