// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <limits>

namespace qk::platform::parse {

std::optional<std::uint64_t> memoryTotal(std::string_view meminfo) {
    constexpr std::uint64_t kUnit = 1024; // the kernel's "kB"
    std::optional<std::uint64_t> bytes;
    forEachLine(meminfo, [&bytes](std::string_view line) {
        const auto sides = splitAt(line, ':');
        if (!sides.has_value() || sides->first != "MemTotal" || !sides->second.ends_with("kB")) {
            return true;
        }
        const auto amount = number<std::uint64_t>(trimmed(sides->second.substr(0, sides->second.size() - 2)));
        if (amount.has_value() && *amount <= std::numeric_limits<std::uint64_t>::max() / kUnit) {
            bytes = *amount * kUnit;
        }
        return false;
    });
    return bytes;
}

std::optional<std::int64_t> bootTime(std::string_view stat) {
    std::optional<std::int64_t> seconds;
    forEachLine(stat, [&seconds](std::string_view line) {
        const auto sides = splitAt(line, ' ');
        if (!sides.has_value() || sides->first != "btime") {
            return true;
        }
        seconds = number<std::int64_t>(sides->second);
        return false;
    });
    return seconds;
}

std::optional<std::uint64_t> singleNumber(std::string_view content, int base) {
    if (content.ends_with('\n')) {
        content.remove_suffix(1);
    }
    return number<std::uint64_t>(content, base);
}

std::optional<std::string> singleText(std::string_view content) {
    content = content.substr(0, content.find('\0'));
    if (content.ends_with('\n')) {
        content.remove_suffix(1);
    }
    if (content.find_first_not_of(" \t\r\n") == std::string_view::npos) {
        return std::nullopt;
    }
    return std::string(content);
}

} // namespace qk::platform::parse
