// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/WirelessMessages.h"

#include <linux/genetlink.h>
#include <linux/nl80211.h>

namespace qk::platform::parse {
namespace {

constexpr std::int64_t kBitRateUnit = 100'000;

// The attributes of a message of that command; nothing for another command.
std::optional<Bytes> attributesOf(std::uint8_t command, Bytes payload) noexcept {
    const auto header = leading<genlmsghdr>(payload);
    if (!header.has_value() || header->cmd != command) {
        return std::nullopt;
    }
    return attributesBehind(payload, sizeof(genlmsghdr));
}

} // namespace

std::optional<std::uint16_t> genericFamily(Bytes payload) noexcept {
    const auto attributes = attributesOf(CTRL_CMD_NEWFAMILY, payload);
    return attributes.has_value() ? leading<std::uint16_t>(attributePayload(*attributes, CTRL_ATTR_FAMILY_ID))
                                  : std::nullopt;
}

std::optional<WirelessInterface> wirelessInterface(Bytes payload) {
    const auto attributes = attributesOf(NL80211_CMD_NEW_INTERFACE, payload);
    if (!attributes.has_value()) {
        return std::nullopt;
    }
    WirelessInterface interface;
    forEachAttribute(*attributes, [&interface](const NetlinkAttribute& attribute) {
        if (attribute.type == NL80211_ATTR_IFTYPE) {
            interface.isStation = leading<std::uint32_t>(attribute.payload) == std::uint32_t{NL80211_IFTYPE_STATION};
        } else if (attribute.type == NL80211_ATTR_SSID && !attribute.payload.empty()) {
            interface.ssid.emplace(reinterpret_cast<const char*>(attribute.payload.data()), attribute.payload.size());
        }
    });
    return interface;
}

std::optional<std::int64_t> stationBitRate(Bytes payload) noexcept {
    const auto attributes = attributesOf(NL80211_CMD_NEW_STATION, payload);
    if (!attributes.has_value()) {
        return std::nullopt;
    }
    const Bytes rate =
        attributePayload(attributePayload(*attributes, NL80211_ATTR_STA_INFO), NL80211_STA_INFO_TX_BITRATE);
    // Above 6.5 Gbit/s only the wider number is there; old kernels send the narrow one alone.
    if (const auto wide = leading<std::uint32_t>(attributePayload(rate, NL80211_RATE_INFO_BITRATE32))) {
        return *wide != 0 ? std::optional(kBitRateUnit * *wide) : std::nullopt;
    }
    const auto narrow = leading<std::uint16_t>(attributePayload(rate, NL80211_RATE_INFO_BITRATE));
    return narrow.value_or(0) != 0 ? std::optional(kBitRateUnit * *narrow) : std::nullopt;
}

} // namespace qk::platform::parse
