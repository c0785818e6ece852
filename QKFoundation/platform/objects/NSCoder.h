// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <optional>
#include <utility>

namespace qk {

/// What an object is made from when it comes out of an interface file: values by key. Threads: a plain value.
class QK_EXPORT NSCoder {
public:
    /// A coder without values.
    NSCoder() = default;
    explicit NSCoder(NSDictionary values) : values_(std::move(values)) {}

    /// `decodeObjectForKey:`. Nothing when the file has no value of that key.
    [[nodiscard]] std::optional<Value> decodeObjectForKey(const NSString& key) const;

private:
    NSDictionary values_;
};

} // namespace qk
