// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"

#include <cstdint>
#include <optional>
#include <string>

/// Messages of generic netlink: its directory, and nl80211. Each function takes the payload of one message and checks
/// every length.
namespace qk::platform::parse {

/// CTRL_CMD_NEWFAMILY: the type of message that the family was given.
[[nodiscard]] std::optional<std::uint16_t> genericFamily(Bytes payload) noexcept;

/// What NL80211_CMD_NEW_INTERFACE tells.
struct WirelessInterface {
    bool isStation = false;          ///< a client of an access point, not one itself
    std::optional<std::string> ssid; ///< bytes; nothing while it is not associated

    friend bool operator==(const WirelessInterface&, const WirelessInterface&) = default;
};

/// NL80211_CMD_NEW_INTERFACE; nothing for another message.
[[nodiscard]] std::optional<WirelessInterface> wirelessInterface(Bytes payload);

/// NL80211_CMD_NEW_STATION: the rate at which is sent to it, bits per second; nothing when it is not known.
[[nodiscard]] std::optional<std::int64_t> stationBitRate(Bytes payload) noexcept;

} // namespace qk::platform::parse
