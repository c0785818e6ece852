// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <span>
#include <string>

namespace qk::info {

/// The sections as programs read them: one JSON object with a member per section, which is an object of facts, an array
/// of such objects, or null. A fact that the machine does not tell is null; numbers are raw, in the unit that the key
/// names; moments are ISO 8601 in UTC. ASCII only: everything else, and what would steer a terminal, is escaped.
[[nodiscard]] std::string renderJson(std::span<const Section> sections);

/// The same on one line, with the time of the sections first, as "time".
[[nodiscard]] std::string renderJsonLine(Moment time, std::span<const Section> sections);

} // namespace qk::info
