// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// Normalization form C of UTF-16 text: canonical decomposition, then canonical composition. The tables are of
/// Unicode 15.0; characters that it does not assign stay as they are, and so do lone surrogates.
///
/// Time is linear in the length of the text, whatever it holds. Threads: both may be called from anywhere.
namespace qk::unicode {

/// Whether `in` is in form C already. The answer is exact; text of the common scripts gets it without a table.
[[nodiscard]] bool isNFC(std::u16string_view in);

/// Appends the form C of `in` to `out`. `in` must not be inside `out`.
void appendNFC(std::u16string_view in, std::u16string& out);

} // namespace qk::unicode
