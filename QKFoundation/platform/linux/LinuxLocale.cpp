// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxLocale.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/Assignments.h"
#include "QKFoundation/platform/linux/parse/LocaleNames.h"

#include <optional>
#include <string>

namespace qk::platform {
namespace {

// The name of the locale for messages; nothing when `variables` set none.
std::optional<std::string> localeName(const Variables& variables) {
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (std::optional<std::string> value = filledVariable(variables, name); value.has_value()) {
            return value;
        }
    }
    return std::nullopt;
}

Variables variablesOf(const std::optional<std::string>& text) {
    return [assignments = parse::assignments(text.value_or(""))](const char* name) -> std::optional<std::string> {
        const auto found = assignments.find(name);
        const bool isThere = found != assignments.end() && found->first != "LC_ALL";
        return isThere ? std::optional(found->second) : std::nullopt;
    };
}

} // namespace

std::vector<NSString> LinuxLocale::preferredLanguages() const {
    Variables variables = variables_;
    std::optional<std::string> locale = localeName(variables);
    for (const char* const file : {"/etc/locale.conf", "/etc/default/locale"}) {
        if (!locale.has_value()) {
            variables = variablesOf(readBytes(root_.path(file)));
            locale = localeName(variables);
        }
    }
    if (!locale.has_value() || parse::isPlainLocale(*locale)) {
        return {};
    }
    std::vector<NSString> languages;
    const std::string names = variables("LANGUAGE").value_or("") + ":" + *locale;
    for (const std::string& tag : parse::languageTags(names)) {
        languages.push_back(NSString::fromUTF8Lossy(tag));
    }
    return languages;
}

} // namespace qk::platform
