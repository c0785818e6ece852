// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/IORegistry.h"
#include "QKFoundation/platform/values/NSNumber.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

namespace qk {

/// `QKIOKitUtilities`: properties of one type out of an entry of the registry. What is missing or of another type has a
/// fixed answer. Threads: any.
class QKIOKitUtilities {
public:
    QKIOKitUtilities() = delete;

    using Registry = platform::IORegistry;
    using Entry = platform::io_registry_entry_t;

    /// `stringPropertyForIOService:key:`. "" when it is no text.
    [[nodiscard]] static NSString stringPropertyForIOService(const Registry& registry, Entry entry,
                                                             const NSString& key);

    /// `numberPropertyForIOService:key:`. 0 when it is no number; a boolean is none here.
    [[nodiscard]] static NSNumber numberPropertyForIOService(const Registry& registry, Entry entry,
                                                             const NSString& key);

    /// `boolPropertyForIOService:key:`. Whether it is the boolean true: no number, not even 1, is.
    [[nodiscard]] static bool boolPropertyForIOService(const Registry& registry, Entry entry, const NSString& key);

    /// `intPropertyForIOService:key:`. The number's low 32 bits.
    [[nodiscard]] static std::int32_t intPropertyForIOService(const Registry& registry, Entry entry,
                                                              const NSString& key);

    /// `integerPropertyForIOService:key:`. The number in 64 bits.
    [[nodiscard]] static std::int64_t integerPropertyForIOService(const Registry& registry, Entry entry,
                                                                  const NSString& key);
};

} // namespace qk
