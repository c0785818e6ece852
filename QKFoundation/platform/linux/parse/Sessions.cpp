// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Sessions.h"

#include "QKFoundation/platform/linux/parse/Assignments.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>

namespace qk::platform::parse {
namespace {

constexpr bool isOfName(char unit) {
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z') || (unit >= '0' && unit <= '9') ||
           unit == '_' || unit == '-';
}

const std::string* valueOf(const Assignments& assignments, std::string_view name) {
    const auto found = assignments.find(name);
    return found != assignments.end() ? &found->second : nullptr;
}

} // namespace

std::optional<ActiveSession> activeSession(std::string_view seat) {
    const Assignments values = assignments(seat);
    const std::string* user = valueOf(values, "ACTIVE_UID");
    const auto uid = user != nullptr ? number<std::uint32_t>(*user) : std::nullopt;
    if (!uid.has_value()) {
        return std::nullopt;
    }
    const std::string* id = valueOf(values, "ACTIVE");
    const bool isName = id != nullptr && std::ranges::all_of(*id, isOfName);
    return ActiveSession{isName ? *id : std::string(), *uid};
}

bool isOfUser(std::string_view session) {
    const Assignments values = assignments(session);
    const std::string* kind = valueOf(values, "CLASS");
    return kind == nullptr || *kind == "user" || kind->starts_with("user-");
}

std::optional<std::string> userName(std::string_view user) {
    const Assignments values = assignments(user);
    const std::string* name = valueOf(values, "NAME");
    return name != nullptr && !name->empty() ? std::optional(*name) : std::nullopt;
}

std::optional<std::string> activeTerminal(std::string_view active) {
    while (active.ends_with('\n')) {
        active.remove_suffix(1);
    }
    constexpr std::string_view kPrefix = "tty";
    const bool isTerminal =
        active.starts_with(kPrefix) && active.size() > kPrefix.size() &&
        std::ranges::all_of(active.substr(kPrefix.size()), [](char unit) { return unit >= '0' && unit <= '9'; });
    return isTerminal ? std::optional(std::string(active)) : std::nullopt;
}

} // namespace qk::platform::parse
