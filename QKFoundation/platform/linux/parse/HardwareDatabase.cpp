// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/HardwareDatabase.h"

#include "QKFoundation/platform/linux/parse/Mounts.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace qk::platform::parse {
namespace {

constexpr std::size_t kLongestLine = 4096;
constexpr std::size_t kDigits = 4;

std::optional<std::string> nonEmpty(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

// The name behind "8086  " when the line has that number.
std::optional<std::string> nameBehind(std::string_view line, std::uint16_t wanted) {
    if (line.size() <= kDigits || (line[kDigits] != ' ' && line[kDigits] != '\t') ||
        number<std::uint16_t>(line.substr(0, kDigits), 16) != wanted) {
        return std::nullopt;
    }
    return nonEmpty(trimmed(line.substr(kDigits)));
}

} // namespace

HardwareNames databaseNames(std::string_view record) {
    return {nonEmpty(trimmed(deviceProperty(record, "E:ID_VENDOR_FROM_DATABASE="))),
            nonEmpty(trimmed(deviceProperty(record, "E:ID_MODEL_FROM_DATABASE=")))};
}

bool HardwareSearch::feed(std::string_view part) {
    while (!isDone_ && !part.empty()) {
        const std::size_t end = part.find('\n');
        const std::string_view piece = part.substr(0, end);
        if (end != std::string_view::npos && begun_.empty()) {
            visit(piece);
        } else {
            // One byte more than a line may have tells that it is too long.
            begun_.append(piece.substr(0, kLongestLine + 1 - std::min(begun_.size(), kLongestLine + 1)));
            if (end != std::string_view::npos) {
                visit(begun_);
                begun_.clear();
            }
        }
        part.remove_prefix(end == std::string_view::npos ? part.size() : end + 1);
    }
    return !isDone_;
}

HardwareNames HardwareSearch::finish() {
    if (!isDone_ && !begun_.empty()) {
        visit(begun_);
    }
    return std::move(names_);
}

void HardwareSearch::visit(std::string_view line) {
    if (line.empty() || line.front() == '#' || line.size() > kLongestLine) {
        return;
    }
    if (line.front() != '\t') {
        isDone_ = names_.vendor.has_value(); // the next vendor begins
        if (!isDone_) {
            names_.vendor = nameBehind(line, vendor_);
        }
    } else if (names_.vendor.has_value()) {
        names_.model = nameBehind(line.substr(1), device_);
        isDone_ = names_.model.has_value();
    }
}

} // namespace qk::platform::parse
