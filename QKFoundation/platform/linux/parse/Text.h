// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace qk::platform::parse {

/// `text` without blanks, tabs and carriage returns at its ends.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view kSpace = " \t\r";
    const std::size_t first = text.find_first_not_of(kSpace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

/// Calls `visit` with each line, without its line feed. A last line without one counts; `visit` returns false to stop.
template <std::predicate<std::string_view> Visitor>
void forEachLine(std::string_view text, Visitor&& visit) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        if (!visit(line) || end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

/// The two sides of the first `separator`, trimmed; nothing when `line` has none.
[[nodiscard]] constexpr std::optional<std::pair<std::string_view, std::string_view>> splitAt(std::string_view line,
                                                                                             char separator) noexcept {
    const std::size_t position = line.find(separator);
    if (position == std::string_view::npos) {
        return std::nullopt;
    }
    return std::pair(trimmed(line.substr(0, position)), trimmed(line.substr(position + 1)));
}

/// The number that `digits` are as a whole, sign included where the type has one; nothing for anything else, and for a
/// number that the type cannot hold.
template <std::integral Number>
[[nodiscard]] std::optional<Number> number(std::string_view digits, int base = 10) noexcept {
    Number value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stopped, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc() || stopped != end) {
        return std::nullopt;
    }
    return value;
}

} // namespace qk::platform::parse
