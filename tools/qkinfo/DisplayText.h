// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Texts of unknown origin on a terminal: made harmless, measured in columns and broken into lines.
namespace qk::info {

/// UTF-8 with U+FFFD in the place of every lone surrogate.
[[nodiscard]] std::string wellFormedUTF8(const NSString& text);

/// Characters that can be shown, one element each.
///
/// White space and line ends become single blanks. What would steer a terminal or turn its writing direction is spelled
/// out:
/// "\x1B" for the escape character, "\u202E" for an override. Malformed bytes become U+FFFD. A text beyond
/// `kLongestDisplayText` characters is cut, with "..." at the end.
[[nodiscard]] std::wstring displayText(std::string_view utf8);

/// One character as it is shown where none may be lost: as in `displayText`, but white space and line ends count like
/// the others, so a tab is "\x09".
[[nodiscard]] std::wstring displayCharacter(wchar_t character);

/// A text of any length of which no character may be lost, such as a path: one line, each character as
/// `displayCharacter` shows it.
[[nodiscard]] std::wstring displayExact(std::string_view utf8);

inline constexpr std::size_t kLongestDisplayText = 2000;

/// The number of columns that `text`, which `displayText` made, takes on a terminal.
[[nodiscard]] std::size_t displayWidth(std::wstring_view text);

/// `text`, which `displayText` made, in lines of at most `width` columns, broken at blanks where there are any, else
/// behind hyphens and the like. At least one line; a character that is wider than `width` has a line of its own.
[[nodiscard]] std::vector<std::wstring> wrapped(std::wstring_view text, std::size_t width);

/// The beginning of `text`, which `displayText` made, that takes at most `width` columns.
[[nodiscard]] std::wstring_view clipped(std::wstring_view text, std::size_t width);

/// `text`, which `displayText` or `displayExact` made, in at most `width` columns: "..." is in the place of the middle
/// of one that is wider.
[[nodiscard]] std::wstring elided(std::wstring_view text, std::size_t width);

/// `text`, which `displayText` made, in UTF-8.
[[nodiscard]] std::string displayBytes(std::wstring_view text);

/// `displayText` in UTF-8, for a message of one line.
[[nodiscard]] std::string displayLine(std::string_view utf8);

/// A text of any length with its line feeds, tabs and blanks as they are, and otherwise made harmless as `displayText`
/// does it.
[[nodiscard]] std::string displayLines(std::string_view utf8);

} // namespace qk::info
