// SPDX-License-Identifier: Apache-2.0
#include "tools/softwareupdate/Listing.h"

#include <algorithm>

namespace qk::softwareupdate {
namespace {

constexpr std::string_view kNonBreakingHyphen = "\xE2\x80\x91"; // U+2011

std::string withoutBreakingHyphens(std::string_view version) {
    std::string result;
    for (const char unit : version) {
        if (unit == '-') {
            result += kNonBreakingHyphen;
        } else {
            result += unit;
        }
    }
    return result;
}

std::string kilobytes(std::uint64_t bytes) {
    constexpr std::uint64_t kUnit = 1024;
    return std::to_string(bytes / kUnit + (bytes % kUnit != 0 ? 1 : 0)) + "K ";
}

} // namespace

bool isListable(std::string_view word) {
    const auto tears = [](char unit) {
        return static_cast<unsigned char>(unit) <= ' ' || unit == '\x7F' || unit == ',' || unit == '(' || unit == ')';
    };
    return !word.empty() && std::ranges::none_of(word, tears);
}

std::string listing(const PendingUpdates& updates) {
    std::string entries;
    for (const PendingUpdate& update : updates) {
        if (!isListable(update.name) || !isListable(update.version)) {
            continue;
        }
        const std::string version = withoutBreakingHyphens(update.version);
        entries += "   * " + update.name + "-" + version + "\n";
        entries += "\t" + update.name + " (" + version + "), ";
        entries += update.size.has_value() ? kilobytes(*update.size) : std::string();
        entries += update.restart ? "[recommended] [restart]\n" : "[recommended]\n";
    }
    if (entries.empty()) {
        return "No new software available.\n";
    }
    return "Updates for this system:\n" + entries;
}

} // namespace qk::softwareupdate
