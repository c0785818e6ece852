// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>

namespace qk {

class Value;

/// What a collection needs of an object that is no value type: equality, a hash and a text.
/// `NSObject`, the root of all classes with identity, is its one implementation in this library.
class QK_EXPORT NSObjectProtocol {
public:
    NSObjectProtocol() = default;
    NSObjectProtocol(const NSObjectProtocol&) = delete;
    NSObjectProtocol& operator=(const NSObjectProtocol&) = delete;
    virtual ~NSObjectProtocol();

    /// `isEqual:`.
    [[nodiscard]] virtual bool isEqual(const Value& other) const = 0;

    /// `hash`. Equal objects have equal hashes.
    [[nodiscard]] virtual std::size_t hash() const = 0;

    /// `description`. The object's text form.
    [[nodiscard]] virtual NSString description() const = 0;
};

} // namespace qk
