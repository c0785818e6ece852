// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Variables.h"

#include <cstdlib>

namespace qk::platform {

std::optional<std::string> processVariable(const char* name) {
    const char* value = ::secure_getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<std::string> filledVariable(const Variables& variables, const char* name) {
    std::optional<std::string> value = variables(name);
    return value.has_value() && !value->empty() ? value : std::nullopt;
}

} // namespace qk::platform
