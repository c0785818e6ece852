// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qk::softwareupdate {

/// A package of which a newer version can be installed.
struct PendingUpdate {
    std::string name;
    std::string version;               ///< the newer one, as the package manager writes it
    std::optional<std::uint64_t> size; ///< bytes to download; nothing when the source does not tell
    bool restart = false;              ///< whether the system should be started anew afterwards

    [[nodiscard]] friend bool operator==(const PendingUpdate&, const PendingUpdate&) = default;
};

using PendingUpdates = std::vector<PendingUpdate>;

} // namespace qk::softwareupdate
