// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <vector>

namespace qk::platform {

/// What the user prefers to read. Threads: any, at the same time.
class QK_EXPORT Locale {
public:
    Locale() = default;
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
    virtual ~Locale();

    /// `NSLocale` `preferredLanguages`. Language tags such as "de-DE" or "zh-Hans", the most preferred first; empty
    /// when nothing is preferred.
    [[nodiscard]] virtual std::vector<NSString> preferredLanguages() const = 0;
};

} // namespace qk::platform
