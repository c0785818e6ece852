// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

namespace qk::platform {

/// The uniform type identifiers that the system knows. Threads: any, at the same time.
class QK_EXPORT UniformTypes {
public:
    UniformTypes() = default;
    UniformTypes(const UniformTypes&) = delete;
    UniformTypes& operator=(const UniformTypes&) = delete;
    virtual ~UniformTypes();

    /// `UTTypeConformsTo`. Whether `type` is `conformsTo` or one that conforms to it, over any number of steps. Letter
    /// case makes no difference. An identifier that nobody declared conforms to itself alone.
    [[nodiscard]] virtual bool typeConformsTo(const NSString& type, const NSString& conformsTo) const = 0;
};

} // namespace qk::platform
