// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Value.h"

#include "QKFoundation/platform/values/Collections.h"
#include "QKFoundation/platform/values/Description.h"

namespace qk {

NSObjectProtocol::~NSObjectProtocol() = default;

std::size_t Value::hash() const {
    return visit([]<typename T>(const T& held) -> std::size_t {
        if constexpr (std::same_as<T, NSNull>) {
            return 0;
        } else if constexpr (std::same_as<T, Object>) {
            return held->hash();
        } else {
            return held.hash();
        }
    });
}

NSString Value::description() const {
    if (const auto* string = as<NSString>()) {
        return *string;
    }
    return internal::describe(*this);
}

bool operator==(const Value& left, const Value& right) {
    return internal::areEqual(left, right);
}

} // namespace qk
