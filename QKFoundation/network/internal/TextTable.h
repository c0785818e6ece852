// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <utility>
#include <vector>

namespace qk::internal {

/// Texts and what they stand for, tested in this order. Tables are made once and never destroyed: other threads may
/// still ask while the process ends.
template <typename T>
using TextTable = std::vector<std::pair<NSString, T>>;

/// What the first equal text stands for; `otherwise` when there is none, and for nothing.
template <typename T>
[[nodiscard]] T valueOf(const TextTable<T>& table, const std::optional<NSString>& text, T otherwise) {
    if (text.has_value()) {
        for (const auto& [known, value] : table) {
            if (known == *text) {
                return value;
            }
        }
    }
    return otherwise;
}

} // namespace qk::internal
