// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform::parse {

/// The folder that a user's list of folders (user-dirs.dirs) assigns to `name`, such as "XDG_DOWNLOAD_DIR": an absolute
/// path, or "$HOME" with what follows it, which is below `home` then. Nothing when there is no such line, or another
/// value. Without trailing "/", but for "/" itself.
[[nodiscard]] std::optional<std::string> userDirectory(std::string_view text, std::string_view name,
                                                       std::string_view home);

} // namespace qk::platform::parse
