// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Assignments.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace qk::platform::parse {
namespace {

constexpr bool isNameUnit(char unit) {
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z') || (unit >= '0' && unit <= '9') || unit == '_';
}

bool isName(std::string_view name) {
    return !name.empty() && (name.front() < '0' || name.front() > '9') && std::ranges::all_of(name, isNameUnit);
}

// Between double quotes a shell knows only these escapes and keeps every other backslash.
constexpr bool isEscapedInQuotes(char unit) {
    return unit == '"' || unit == '\\' || unit == '$' || unit == '`';
}

// The value without its quotes and escapes; nothing when a quote is not closed.
std::optional<std::string> unquoted(std::string_view text) {
    std::string value;
    char quote = '\0';
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char unit = text[index];
        const bool last = index + 1 == text.size();
        if (quote == '\0' && (unit == '"' || unit == '\'')) {
            quote = unit;
        } else if (quote != '\0' && unit == quote) {
            quote = '\0';
        } else if (unit == '\\' && quote != '\'' && !last && (quote == '\0' || isEscapedInQuotes(text[index + 1]))) {
            value.push_back(text[++index]);
        } else {
            value.push_back(unit);
        }
    }
    return quote == '\0' ? std::optional(std::move(value)) : std::nullopt;
}

} // namespace

Assignments assignments(std::string_view text) {
    Assignments result;
    forEachLine(text, [&result](std::string_view line) {
        const std::string_view content = trimmed(line);
        const std::size_t equals = content.find('=');
        if (equals == std::string_view::npos || content.front() == '#' || !isName(content.substr(0, equals))) {
            return true;
        }
        if (std::optional<std::string> value = unquoted(content.substr(equals + 1)); value.has_value()) {
            result.insert_or_assign(std::string(content.substr(0, equals)), *std::move(value));
        }
        return true;
    });
    return result;
}

NSOperatingSystemVersion versionTriple(std::string_view versionID) {
    std::array<std::int64_t, 3> parts{};
    for (std::int64_t& part : parts) {
        const std::size_t digits = std::min(versionID.find_first_not_of("0123456789"), versionID.size());
        const std::optional<std::int64_t> value = number<std::int64_t>(versionID.substr(0, digits));
        if (!value.has_value()) {
            break;
        }
        part = *value;
        versionID.remove_prefix(digits);
        if (!versionID.starts_with('.')) {
            break;
        }
        versionID.remove_prefix(1);
    }
    return {parts[0], parts[1], parts[2]};
}

} // namespace qk::platform::parse
