// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform::parse {

/// The MIME type that the shared MIME database's list of patterns (/usr/share/mime/globs2, lines such as
/// "50:text/plain:*.txt") has for file names that end in "." and `extension`. The heaviest pattern counts, of equal
/// ones the first; a pattern in the very letter case is better than any other, and one that is marked "cs" counts in
/// its letter case alone. Nothing when no line is for that ending.
[[nodiscard]] std::optional<std::string> typeForExtension(std::string_view globs, std::string_view extension);

} // namespace qk::platform::parse
