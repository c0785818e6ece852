// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// What keeps everything but well-formed property lists away from a parser that asserts, recurses, copies shared parts
/// and takes what it finds of a broken file.
namespace qk::platform {

/// The deepest nesting of arrays and dictionaries that is read or written.
inline constexpr std::size_t kDeepestPropertyList = 512;

/// What has to be known about a property list before it is parsed.
struct TamePropertyList {
    /// The text to be parsed instead, when the parser would get something of the original wrong.
    std::optional<std::string> corrected;

    /// Whether a date may be outside of what the parser hands out: whole seconds that 32 bits hold, counted from 2001.
    bool hasFarDates = false;
};

/// Nothing unless `bytes` are a whole XML property list: UTF-8 without U+0000, after an optional mark, declaration and
/// document type one <plist> with exactly one value of known, balanced tags without attributes, whose texts have the
/// syntax of their kind, and behind it white space and comments alone.
[[nodiscard]] std::optional<TamePropertyList> tameXMLPropertyList(std::string_view bytes);

/// Nothing unless `bytes` are a whole binary property list: everything that the root reaches lies within its bounds, is
/// of a kind that property lists have, is no part of itself, and unfolds into a bounded number of values (a few
/// hundred bytes can name a container twice on each of many levels). Keys are strings without U+0000.
[[nodiscard]] std::optional<TamePropertyList> tameBinaryPropertyList(std::string_view bytes);

} // namespace qk::platform
