// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace qk::platform {

/// The variables of an environment: the value of a name, nothing when it is not set. Threads: any, as far as the
/// environment is not changed at the same time.
using Variables = std::function<std::optional<std::string>(const char* name)>;

/// A variable of this process; nothing in a set-uid process, whose caller may have set it to mislead.
[[nodiscard]] std::optional<std::string> processVariable(const char* name);

/// The value of `name`, which counts as unset when it is empty.
[[nodiscard]] std::optional<std::string> filledVariable(const Variables& variables, const char* name);

} // namespace qk::platform
