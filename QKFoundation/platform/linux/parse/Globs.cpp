// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Globs.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace qk::platform::parse {
namespace {

constexpr char lowerCased(char unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit + ('a' - 'A')) : unit;
}

bool isEqualButForCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lowerCased, lowerCased);
}

struct Glob {
    std::uint32_t weight = 0;
    std::string_view type;
    std::string_view pattern;
    bool isCaseSensitive = false;
};

// "weight:type:pattern", and flags with commas between them behind another colon.
std::optional<Glob> globOf(std::string_view line) {
    const auto weight = splitAt(line, ':');
    const auto type = weight.has_value() ? splitAt(weight->second, ':') : std::nullopt;
    const auto number = type.has_value() ? parse::number<std::uint32_t>(weight->first) : std::nullopt;
    if (!number.has_value()) {
        return std::nullopt;
    }
    const auto flags = splitAt(type->second, ':');
    Glob glob{*number, type->first, flags.has_value() ? flags->first : type->second, false};
    std::string_view rest = flags.has_value() ? flags->second : std::string_view();
    while (!rest.empty()) {
        const std::string_view flag = rest.substr(0, rest.find(','));
        glob.isCaseSensitive = glob.isCaseSensitive || flag == "cs";
        rest.remove_prefix(std::min(flag.size() + 1, rest.size()));
    }
    return glob;
}

} // namespace

std::optional<std::string> typeForExtension(std::string_view globs, std::string_view extension) {
    constexpr std::string_view kEnding = "*.";
    std::optional<std::string> best;
    std::pair<bool, std::uint32_t> bestRank; // whether in the very letter case, and the weight
    forEachLine(globs, [&](std::string_view line) {
        const std::optional<Glob> glob = globOf(line);
        if (!glob.has_value() || extension.empty() || !glob->pattern.starts_with(kEnding) || glob->type.empty()) {
            return true;
        }
        const std::string_view ending = glob->pattern.substr(kEnding.size());
        const bool isExact = ending == extension;
        const bool fits = isExact || (!glob->isCaseSensitive && isEqualButForCase(ending, extension));
        const std::pair rank(isExact, glob->weight);
        if (fits && (!best.has_value() || rank > bestRank)) {
            best = glob->type;
            bestRank = rank;
        }
        return true;
    });
    return best;
}

} // namespace qk::platform::parse
