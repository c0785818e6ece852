// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSString.h"

#include <utility>

namespace qk {

/// A text whose characters all bear the same attributes. Threads: a plain value.
class QK_EXPORT NSAttributedString {
public:
    /// `initWithString:attributes:`.
    NSAttributedString(NSString string, NSDictionary attributes)
        : string_(std::move(string)), attributes_(std::move(attributes)) {}

    [[nodiscard]] const NSString& string() const noexcept { return string_; }
    [[nodiscard]] const NSDictionary& attributes() const noexcept { return attributes_; }

    [[nodiscard]] friend bool operator==(const NSAttributedString& left, const NSAttributedString& right) = default;

private:
    NSString string_;
    NSDictionary attributes_;
};

} // namespace qk
