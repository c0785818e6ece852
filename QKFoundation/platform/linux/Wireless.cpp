// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Wireless.h"

#include "QKFoundation/platform/linux/NetlinkSocket.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"
#include "QKFoundation/platform/linux/parse/WirelessMessages.h"

#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <net/if.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

bool isOn(const std::string& file) {
    return parse::singleNumber(readBytes(file).value_or(std::string())).value_or(0) != 0;
}

// Whether a switch of the radio at `phy`, by a key or in the settings, keeps it from sending.
bool isBlocked(const std::string& phy) {
    for (const std::string& name : readDirectory(phy).value_or(std::vector<std::string>())) {
        const std::string folder = phy + "/" + name;
        if (name.starts_with("rfkill") && (isOn(folder + "/soft") || isOn(folder + "/hard"))) {
            return true;
        }
    }
    return false;
}

genlmsghdr command(std::uint8_t number) {
    genlmsghdr header{};
    header.cmd = number;
    header.version = 1;
    return header;
}

std::optional<std::uint16_t> wirelessFamily(NetlinkSocket& socket) {
    NetlinkRequest request(GENL_ID_CTRL, 0, command(CTRL_CMD_GETFAMILY));
    request.append(CTRL_ATTR_FAMILY_NAME, std::string_view(NL80211_GENL_NAME));
    std::optional<std::uint16_t> family;
    const bool isKnown = socket.ask(
        request, [&family](const parse::NetlinkMessage& message) { family = parse::genericFamily(message.payload); });
    return isKnown ? family : std::nullopt;
}

parse::WirelessInterface readInterface(NetlinkSocket& socket, std::uint16_t family, std::int32_t link) {
    NetlinkRequest request(family, 0, command(NL80211_CMD_GET_INTERFACE));
    request.append(NL80211_ATTR_IFINDEX, static_cast<std::uint32_t>(link));
    parse::WirelessInterface interface;
    const bool isAnswered = socket.ask(request, [&interface](const parse::NetlinkMessage& message) {
        interface = parse::wirelessInterface(message.payload).value_or(parse::WirelessInterface());
    });
    return isAnswered ? interface : parse::WirelessInterface();
}

// To the access point that the link is a client of.
std::optional<std::int64_t> readBitRate(NetlinkSocket& socket, std::uint16_t family, std::int32_t link) {
    NetlinkRequest request(family, NLM_F_DUMP, command(NL80211_CMD_GET_STATION));
    request.append(NL80211_ATTR_IFINDEX, static_cast<std::uint32_t>(link));
    std::optional<std::int64_t> bitRate;
    const bool isWhole = socket.dump(
        request, [&bitRate] { bitRate.reset(); },
        [&bitRate](const parse::NetlinkMessage& message) {
            bitRate = bitRate.has_value() ? bitRate : parse::stationBitRate(message.payload);
        });
    return isWhole ? bitRate : std::nullopt;
}

} // namespace

std::optional<WirelessFacts> WirelessReader::read(const LinuxRoot& root, const NetworkLink& link) {
    const std::string phy = root.path("/sys/class/net/") + link.name + "/phy80211";
    if (::access(phy.c_str(), F_OK) != 0) {
        return std::nullopt;
    }
    WirelessFacts facts;
    facts.powered = (link.flags & IFF_UP) != 0 && !isBlocked(phy);
    if (root.isHost()) {
        askKernel(link.index, facts);
    }
    return facts;
}

void WirelessReader::askKernel(std::int32_t link, WirelessFacts& facts) {
    NetlinkSocket socket(NETLINK_GENERIC);
    if (!std::exchange(isAsked_, true)) {
        family_ = wirelessFamily(socket);
    }
    if (!family_.has_value()) {
        return;
    }
    parse::WirelessInterface interface = readInterface(socket, *family_, link);
    facts.ssid = std::move(interface.ssid);
    if (interface.isStation) {
        facts.bitRate = readBitRate(socket, *family_, link);
    }
}

} // namespace qk::platform
