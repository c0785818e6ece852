// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <memory>
#include <optional>
#include <utility>

namespace qk::platform {

/// A POSIX extended regular expression that has to match a text from its beginning to its end (regex(7)). Threads: one
/// at a time.
class WholeMatch {
public:
    /// Nothing for a text that is no such expression.
    [[nodiscard]] static std::optional<WholeMatch> compile(const NSString& pattern);

    /// Texts with U+0000 or lone surrogates never match.
    [[nodiscard]] bool matches(const NSString& text) const;

private:
    struct Expression;
    explicit WholeMatch(std::shared_ptr<const Expression> expression) : expression_(std::move(expression)) {}

    std::shared_ptr<const Expression> expression_;
};

} // namespace qk::platform
