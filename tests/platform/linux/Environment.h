// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/Variables.h"

#include <map>
#include <string>

namespace qk::tests {

/// An environment of these variables alone.
inline platform::Variables environment(const std::map<std::string, std::string>& variables) {
    return [variables](const char* name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found != variables.end() ? std::optional(found->second) : std::nullopt;
    };
}

} // namespace qk::tests
