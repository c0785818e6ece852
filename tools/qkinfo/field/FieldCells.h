// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSRange.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qk::info {

/// What a field shows and steps over as one: a character with its marks.
struct FieldCell {
    NSRange units;           ///< in the text
    std::wstring shown;      ///< itself, or spelled out when it would steer the terminal; U+FFFD for half a character
    std::size_t columns = 0; ///< that `shown` takes
};

/// The cells of `text`, in order; they cover all of it. None for "".
[[nodiscard]] std::vector<FieldCell> fieldCells(const NSString& text);

/// `text` as a field shows it, in UTF-8.
[[nodiscard]] std::string shownInField(const NSString& text);

} // namespace qk::info
