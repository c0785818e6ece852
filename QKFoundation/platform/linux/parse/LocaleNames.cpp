// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/LocaleNames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace qk::platform::parse {
namespace {

constexpr bool isLower(char unit) {
    return unit >= 'a' && unit <= 'z';
}
constexpr bool isUpper(char unit) {
    return unit >= 'A' && unit <= 'Z';
}
constexpr bool isDigit(char unit) {
    return unit >= '0' && unit <= '9';
}

bool isLanguage(std::string_view text) {
    return (text.size() == 2 || text.size() == 3) && std::ranges::all_of(text, isLower);
}

bool isRegion(std::string_view text) {
    return (text.size() == 2 && std::ranges::all_of(text, isUpper)) ||
           (text.size() == 3 && std::ranges::all_of(text, isDigit));
}

// What stands before the first of `marks`; all when there is none.
std::string_view upTo(std::string_view text, std::string_view marks) {
    return text.substr(0, text.find_first_of(marks));
}

std::string_view behind(std::string_view text, char mark) {
    const std::size_t position = text.find(mark);
    return position != std::string_view::npos ? text.substr(position + 1) : std::string_view();
}

std::string_view scriptOf(std::string_view modifier) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kScripts{
        {{"latin", "Latn"}, {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}}};
    const auto* const found =
        std::ranges::find(kScripts, modifier, &std::pair<std::string_view, std::string_view>::first);
    return found != kScripts.end() ? found->second : std::string_view();
}

} // namespace

bool isPlainLocale(std::string_view name) {
    const std::string_view plain = upTo(name, ".@");
    return plain == "C" || plain == "POSIX";
}

std::optional<std::string> languageTag(std::string_view name) {
    const std::string_view place = upTo(name, ".@");
    const std::string_view language = upTo(place, "_");
    const std::string_view region = behind(place, '_');
    const bool hasRegion = place.size() != language.size();
    if (!isLanguage(language) || (hasRegion && !isRegion(region))) {
        return std::nullopt;
    }
    if (language == "zh") {
        const bool isTraditional = region == "TW" || region == "HK" || region == "MO";
        return isTraditional ? "zh-Hant" : "zh-Hans";
    }
    std::string tag(language);
    for (const std::string_view part : {scriptOf(behind(name, '@')), region}) {
        if (!part.empty()) {
            tag.append("-").append(part);
        }
    }
    return tag;
}

std::vector<std::string> languageTags(std::string_view names) {
    std::vector<std::string> tags;
    while (!names.empty()) {
        const std::string_view name = upTo(names, ":");
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        std::optional<std::string> tag = languageTag(name);
        if (tag.has_value() && std::ranges::find(tags, *tag) == tags.end()) {
            tags.push_back(*std::move(tag));
        }
    }
    return tags;
}

} // namespace qk::platform::parse
