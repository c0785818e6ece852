// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace qk::info {

/// The value of PRETTY_NAME in the text of an os-release file: the last assignment counts, quotes are removed, a
/// backslash takes the next character as it is. Nothing without an assignment, or with one that is malformed or not
/// UTF-8.
[[nodiscard]] std::optional<NSString> prettyName(std::string_view osRelease);

/// What the distribution calls itself: PRETTY_NAME of etc/os-release below `root`, or of usr/lib/os-release when the
/// first file cannot be read.
[[nodiscard]] std::optional<NSString> distributionName(const std::filesystem::path& root);

} // namespace qk::info
