// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"

#include <memory>
#include <span>
#include <string_view>

namespace qk::info {

/// A kind of text field of the application.
struct FieldKind {
    std::string_view name;    ///< on the command line and in the JSON
    std::string_view title;   ///< beside the field
    bool isConverted = false; ///< whether what it shows is another text than what was entered, once that is finished

    /// What looks after the field; never null.
    std::shared_ptr<const NSFormatter> (*makeFormatter)();
};

/// All of them.
[[nodiscard]] std::span<const FieldKind> fieldKinds() noexcept;

/// The kind that is called `name`; null when there is none.
[[nodiscard]] const FieldKind* fieldKindNamed(std::string_view name) noexcept;

/// What a field of `kind` with `formatter` shows once the entry of `text` is finished.
[[nodiscard]] NSString finishedText(const FieldKind& kind, const NSFormatter& formatter, const NSString& text);

} // namespace qk::info
