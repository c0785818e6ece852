// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <memory>

namespace qk {

class NSObject;

/// `NSCopying`. What an object adopts that others may copy. Threads: as the object.
class QK_EXPORT NSCopying {
public:
    NSCopying() = default;
    NSCopying(const NSCopying&) = default;
    NSCopying& operator=(const NSCopying&) = default;
    virtual ~NSCopying() = default;

    /// `copyWithZone:`. A new object with the same content, never null.
    [[nodiscard]] virtual std::shared_ptr<NSObject> copyWithZone() const = 0;
};

} // namespace qk
