// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/field/FieldKinds.h"

#include <optional>
#include <string>
#include <vector>

namespace qk::info {

/// What the command line asks `format` for.
struct FormatOptions {
    const FieldKind* kind = nullptr;
    std::vector<std::string> texts; ///< in UTF-8
};

struct FormattedText {
    NSString text;
    std::optional<NSString> shown; ///< by the field; nothing when it refused the text
};

/// What an empty field shows once a text was pasted into it and its entry is finished; for each text, in order.
[[nodiscard]] std::vector<FormattedText> formatted(const FormatOptions& options);

/// A line for each text that was not refused, as a field shows it.
[[nodiscard]] std::string renderFormatted(const std::vector<FormattedText>& texts);

/// All of them, with null for what is shown of a refused text.
[[nodiscard]] std::string renderFormattedJson(const FieldKind& kind, const std::vector<FormattedText>& texts);

/// A message for each text that was refused.
[[nodiscard]] std::vector<std::string> refusals(const FieldKind& kind, const std::vector<FormattedText>& texts);

} // namespace qk::info
