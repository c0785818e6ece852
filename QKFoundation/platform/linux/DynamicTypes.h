// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Dynamic type identifiers: "dyn.a" and a text in base 32, such as "?0=6:1=sql", which says what the type conforms to
/// and which filename extension it was made for.
namespace qk::platform::types {

[[nodiscard]] bool isDynamic(std::string_view identifier);

/// The text behind a dynamic identifier in lower case; nothing when it is none or malformed.
[[nodiscard]] std::optional<std::string> dynamicText(std::string_view identifier);

/// What a dynamic identifier in lower case says that it conforms to; "public.data" when it says nothing.
[[nodiscard]] std::vector<std::string_view> dynamicConformance(std::string_view identifier);

/// The dynamic identifier of files with that extension that are of `type`, which is one of those that have a letter of
/// their own ("public.data", "public.text", "public.image" and so on), else "public.data".
[[nodiscard]] std::string dynamicIdentifier(std::string_view type, std::string_view extension);

} // namespace qk::platform::types
