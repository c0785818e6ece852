// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/field/FieldKinds.h"

#include <optional>

namespace qk::info {

/// A field of `kind` on the terminal: at standard input for the keys, at standard error or else output to be shown.
/// What it shows in the end; nothing when its input was ended without a text. Ends the process when it is cancelled.
/// Raises `std::runtime_error` where there is no terminal, or where it goes away.
[[nodiscard]] std::optional<NSString> runField(const FieldKind& kind);

} // namespace qk::info
