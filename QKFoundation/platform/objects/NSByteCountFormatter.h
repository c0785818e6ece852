// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

namespace qk {

/// How `NSByteCountFormatter` counts: `NSByteCountFormatterCountStyleBinary` has units of 1024.
enum class NSByteCountFormatterCountStyle { File = 0, Memory = 1, Decimal = 2, Binary = 3 };

/// `NSByteCountFormatter`: amounts of memory and files as people read them.
class QK_EXPORT NSByteCountFormatter {
public:
    NSByteCountFormatter() = delete;

    /// `stringFromByteCount:countStyle:`. "Zero KB", "1 byte", "1,023 bytes", "879 KB", "11.8 MB", "1.15 GB": bytes and
    /// KB without decimals, MB with at most one, larger units with at most two, trailing zeros dropped, thousands
    /// grouped. A unit begins at its exact power. Files and decimal counts have units of 1000, the others of 1024. Any
    /// thread.
    [[nodiscard]] static NSString stringFromByteCount(std::int64_t byteCount,
                                                      NSByteCountFormatterCountStyle countStyle);
};

} // namespace qk
