// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The UTF-32 codecs for `wchar_t`. It has the size and the values of `char32_t` here but is another type, and memory
/// of one must not be read as the other: the elements pass through a small buffer, which costs next to nothing.
namespace qk::internal {

/// The UTF-16 units that `elements` need; nothing if one of them is a surrogate or above U+10FFFF.
[[nodiscard]] std::optional<std::size_t> utf16LengthOfWide(std::wstring_view elements);

/// Writes `elements` as UTF-16 to `out`, which holds twice as many units. Returns the units written; nothing if an
/// element is a surrogate or above U+10FFFF.
[[nodiscard]] std::optional<std::size_t> wideToUTF16(std::wstring_view elements, char16_t* out);

/// As `wideToUTF16`, for elements known to be well-formed; `out` holds exactly the result.
void validWideToUTF16(std::wstring_view elements, char16_t* out);

/// The UTF-32 form of `units`; nothing for a lone surrogate, unless `loss` stands in for it.
[[nodiscard]] std::optional<std::wstring> utf16ToWide(std::u16string_view units, std::optional<wchar_t> loss);

} // namespace qk::internal
