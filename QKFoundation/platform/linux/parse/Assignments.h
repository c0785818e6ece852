// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/ProcessInfo.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace qk::platform::parse {

/// Values by name.
using Assignments = std::map<std::string, std::string, std::less<>>;

/// The assignments of a text such as /etc/os-release or /etc/machine-info (os-release(5), machine-info(5)): NAME=value,
/// quoted and escaped as a shell reads them. The last assignment of a name counts. Comments, and lines that are no
/// assignment or whose quote is never closed, are skipped.
[[nodiscard]] Assignments assignments(std::string_view text);

/// The version that VERSION_ID of os-release writes: up to three numbers with dots between them. A number that is
/// missing, and all that follows the first other character, is 0: "12" is 12.0.0, "22.04" is 22.4.0, "rolling" 0.0.0.
[[nodiscard]] NSOperatingSystemVersion versionTriple(std::string_view versionID);

} // namespace qk::platform::parse
