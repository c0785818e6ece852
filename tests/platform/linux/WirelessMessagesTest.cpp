// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/WirelessMessages.h"

#include "tests/platform/linux/NetlinkBytes.h"

#include <gtest/gtest.h>

#include <linux/genetlink.h>
#include <linux/nl80211.h>

#include <string>

namespace qk::platform::parse {
namespace {

using tests::attribute;
using tests::bytesOf;
using tests::ByteVector;
using tests::joined;

ByteVector command(std::uint8_t number) {
    genlmsghdr header{};
    header.cmd = number;
    return bytesOf(header);
}

TEST(GenericFamily, OneThatIsNotToldIsNothing) {
    EXPECT_EQ(genericFamily({}), std::nullopt);
    EXPECT_EQ(genericFamily(command(CTRL_CMD_NEWFAMILY)), std::nullopt);
    const ByteVector number = attribute(CTRL_ATTR_FAMILY_ID, bytesOf(std::uint16_t{28}));
    EXPECT_EQ(genericFamily(joined({command(CTRL_CMD_DELFAMILY), number})), std::nullopt);
    EXPECT_EQ(genericFamily(joined({command(CTRL_CMD_NEWFAMILY), attribute(CTRL_ATTR_FAMILY_ID, bytesOf("x"))})),
              std::nullopt);
    EXPECT_EQ(genericFamily(joined({command(CTRL_CMD_NEWFAMILY), number})), 28);
}

const ByteVector kStation = attribute(NL80211_ATTR_IFTYPE, bytesOf(std::uint32_t{NL80211_IFTYPE_STATION}));

TEST(WirelessInterface, AnotherMessageIsNone) {
    EXPECT_EQ(wirelessInterface({}), std::nullopt);
    EXPECT_EQ(wirelessInterface(joined({command(NL80211_CMD_NEW_STATION), kStation})), std::nullopt);
}

TEST(WirelessInterface, OneThatIsNotAssociatedHasNoName) {
    EXPECT_EQ(wirelessInterface(command(NL80211_CMD_NEW_INTERFACE)), WirelessInterface());
    EXPECT_EQ(wirelessInterface(joined({command(NL80211_CMD_NEW_INTERFACE), kStation})),
              (WirelessInterface{true, std::nullopt}));
    EXPECT_EQ(wirelessInterface(joined({command(NL80211_CMD_NEW_INTERFACE), attribute(NL80211_ATTR_SSID, {})})),
              WirelessInterface());
}

TEST(WirelessInterface, TheNetworksNameIsItsBytes) {
    const std::string name("caf\xE9\0x", 6);
    EXPECT_EQ(wirelessInterface(joined({command(NL80211_CMD_NEW_INTERFACE),
                                        attribute(NL80211_ATTR_SSID, bytesOf(std::string_view(name))), kStation})),
              (WirelessInterface{true, name}));
}

TEST(WirelessInterface, AnAccessPointIsNoStation) {
    const ByteVector kind = attribute(NL80211_ATTR_IFTYPE, bytesOf(std::uint32_t{NL80211_IFTYPE_AP}));
    EXPECT_EQ(wirelessInterface(joined({command(NL80211_CMD_NEW_INTERFACE), kind})), WirelessInterface());
}

std::optional<std::int64_t> bitRate(const ByteVector& rate, std::uint8_t number = NL80211_CMD_NEW_STATION) {
    return stationBitRate(joined({command(number), attribute(NL80211_ATTR_STA_INFO | NLA_F_NESTED,
                                                             attribute(NL80211_STA_INFO_TX_BITRATE, rate))}));
}

TEST(StationBitRate, OneThatIsNotKnownIsNothing) {
    EXPECT_EQ(stationBitRate({}), std::nullopt);
    EXPECT_EQ(stationBitRate(command(NL80211_CMD_NEW_STATION)), std::nullopt);
    EXPECT_EQ(bitRate({}), std::nullopt);
    EXPECT_EQ(bitRate(attribute(NL80211_RATE_INFO_BITRATE, bytesOf(std::uint16_t{0}))), std::nullopt);
    EXPECT_EQ(bitRate(attribute(NL80211_RATE_INFO_BITRATE32, bytesOf(std::uint32_t{0}))), std::nullopt);
    EXPECT_EQ(bitRate(attribute(NL80211_RATE_INFO_BITRATE, bytesOf("x"))), std::nullopt);
}

TEST(StationBitRate, IsInBitsPerSecond) {
    const ByteVector narrow = attribute(NL80211_RATE_INFO_BITRATE, bytesOf(std::uint16_t{8667}));
    const ByteVector wide = attribute(NL80211_RATE_INFO_BITRATE32, bytesOf(std::uint32_t{96078}));
    EXPECT_EQ(bitRate(narrow), 866'700'000);
    EXPECT_EQ(bitRate(wide), 9'607'800'000);
    EXPECT_EQ(bitRate(joined({narrow, wide})), 9'607'800'000);
    EXPECT_EQ(bitRate(narrow, NL80211_CMD_NEW_INTERFACE), std::nullopt);
}

} // namespace
} // namespace qk::platform::parse
