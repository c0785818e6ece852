// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform::parse {

/// Whether the locale of that name prefers no language: "C" and "POSIX", with any character set ("C.UTF-8").
[[nodiscard]] bool isPlainLocale(std::string_view name);

/// The language tag of a locale's name (locale(7): language_REGION.charset@modifier): "de_DE.UTF-8" is "de-DE",
/// "sr_RS@latin" is "sr-Latn-RS". Chinese is told apart by its script alone, whatever the region: "zh_CN" is "zh-Hans",
/// "zh_HK" is "zh-Hant". Nothing for what is no name of a language.
[[nodiscard]] std::optional<std::string> languageTag(std::string_view name);

/// The tags of a list of names with colons between them, each once, in order.
[[nodiscard]] std::vector<std::string> languageTags(std::string_view names);

} // namespace qk::platform::parse
