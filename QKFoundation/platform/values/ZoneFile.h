// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/ZoneRule.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace qk::internal {

/// What a compiled zone file (RFC 8536, "TZif", versions 1 to 4) tells.
struct ZoneFile {
    std::vector<std::int64_t> transitions; ///< ascending, in seconds since 1970
    std::vector<std::uint8_t> timeAfter;   ///< for each transition the index of the local time from then on
    std::vector<LocalTime> times;          ///< at least one; the first one holds before all transitions
    std::optional<ZoneRule> rule;          ///< holds behind the last transition

    /// The zone that `bytes` describe; leap seconds are not counted. Nothing when they are malformed anywhere.
    [[nodiscard]] static std::optional<ZoneFile> parse(std::string_view bytes);

    /// The local time at `moment`, in seconds since 1970.
    [[nodiscard]] const LocalTime& localTimeAt(std::int64_t moment) const;
};

} // namespace qk::internal
