// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <cstdint>
#include <optional>

namespace qk::platform {

/// Wireless links: which they are and whether their radio may send is in /sys (phy80211, rfkill), the rest tells
/// nl80211. Threads: one at a time.
class WirelessReader {
public:
    /// Nothing for a link that is not wireless. Of captured files only `powered` is known.
    [[nodiscard]] std::optional<WirelessFacts> read(const LinuxRoot& root, const NetworkLink& link);

private:
    void askKernel(std::int32_t link, WirelessFacts& facts);

    bool isAsked_ = false;
    std::optional<std::uint16_t> family_; // of nl80211, once it has been asked for
};

} // namespace qk::platform
