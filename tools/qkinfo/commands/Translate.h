// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <optional>
#include <string>
#include <vector>

namespace qk::info {

/// Which text of which application. All in the encoding that they came in.
struct TranslateOptions {
    std::string bundle;                  ///< the path of its folder
    std::optional<std::string> language; ///< the name of a language's folder; nothing for what the user prefers
    std::string key;
    std::vector<std::string> arguments;
};

/// A text, formatted.
struct Translated {
    NSString key;
    std::optional<NSString> language; ///< nothing when none was chosen and the user prefers none
    NSString text;
};

/// Looks the text up. Once in a process: the bundle and the language are set for its life. Malformed bytes of the
/// arguments become U+FFFD; those of the path stand for themselves. Raises `std::runtime_error` when there is no
/// bundle, or none of its folders is to be searched.
[[nodiscard]] Translated translate(const TranslateOptions& options);

/// The text as a section, for the JSON.
[[nodiscard]] Section sectionOf(const Translated& translated);

} // namespace qk::info
