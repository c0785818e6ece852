// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/OsRelease.h"

#include <array>
#include <fstream>
#include <string>

namespace qk::info {

namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The value of a shell assignment: words without blanks, single or double quoted, or bare.
std::optional<std::string> unquoted(std::string_view value) {
    std::string text;
    char quote = '\0';
    for (std::size_t index = 0; index < value.size(); ++index) {
        const char character = value[index];
        if (character == '\\' && quote != '\'' && index + 1 < value.size()) {
            text += value[++index];
        } else if (character == quote) {
            quote = '\0';
        } else if (quote == '\0' && (character == '"' || character == '\'')) {
            quote = character;
        } else if (quote == '\0' && (character == ' ' || character == '\t')) {
            return std::nullopt;
        } else {
            text += character;
        }
    }
    return quote == '\0' ? std::optional<std::string>(std::move(text)) : std::nullopt;
}

std::optional<std::string> contentsOf(const std::filesystem::path& path) {
    // Far more than any such file holds; one that goes on, such as a device, is not read to its end.
    constexpr std::size_t kLongest = 65536;
    std::ifstream file(path, std::ios::binary);
    std::array<char, kLongest> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    file.read(buffer.data(), buffer.size());
    if (!file.is_open() || file.bad()) {
        return std::nullopt;
    }
    return std::string(buffer.data(), static_cast<std::size_t>(file.gcount()));
}

} // namespace

std::optional<NSString> prettyName(std::string_view osRelease) {
    constexpr std::string_view kKey = "PRETTY_NAME=";
    std::optional<std::string> name;
    while (!osRelease.empty()) {
        const std::string_view line = trimmed(osRelease.substr(0, osRelease.find('\n')));
        osRelease.remove_prefix(std::min(osRelease.find('\n'), osRelease.size() - 1) + 1);
        if (line.starts_with(kKey)) {
            name = unquoted(line.substr(kKey.size()));
        }
    }
    return name.has_value() ? NSString::fromUTF8(*name) : std::nullopt;
}

std::optional<NSString> distributionName(const std::filesystem::path& root) {
    auto text = contentsOf(root / "etc/os-release");
    if (!text.has_value()) {
        text = contentsOf(root / "usr/lib/os-release");
    }
    return text.has_value() ? prettyName(*text) : std::nullopt;
}

} // namespace qk::info
