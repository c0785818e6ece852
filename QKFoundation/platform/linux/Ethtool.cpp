// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Ethtool.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace qk::platform {
namespace {

// The fixed part of the settings, and room for the three masks of modes behind it.
constexpr std::size_t kMostWords = 127; // of a mask: a signed byte says how many they are
using Settings = std::array<std::uint32_t, sizeof(ethtool_link_settings) / sizeof(std::uint32_t) + 3 * kMostWords>;

// Asks for the settings, with as many words for each mask as `fixed` says, and reads their fixed part.
bool ask(int socket, const std::string& name, ethtool_link_settings& fixed) {
    ifreq request{};
    if (name.empty() || name.size() >= sizeof(request.ifr_name)) {
        return false;
    }
    std::memcpy(static_cast<char*>(request.ifr_name), name.data(), name.size());
    fixed.cmd = ETHTOOL_GLINKSETTINGS;
    Settings settings{};
    std::memcpy(settings.data(), &fixed, sizeof(fixed));
    request.ifr_data = reinterpret_cast<char*>(settings.data());
    int result = -1;
    do {
        result = ::ioctl(socket, SIOCETHTOOL, &request);
    } while (result < 0 && errno == EINTR);
    std::memcpy(&fixed, settings.data(), sizeof(fixed));
    return result == 0;
}

} // namespace

std::optional<MediumFacts> readMedium(const std::string& name) {
    // Any socket takes requests about links; this kind is there in every kernel.
    const UniqueFD socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ethtool_link_settings settings{};
    // To a question without room for masks the kernel answers with how many words they take, as a negative number.
    if (!socket || !ask(socket.get(), name, settings) || settings.link_mode_masks_nwords >= 0) {
        return std::nullopt;
    }
    settings.link_mode_masks_nwords = static_cast<std::int8_t>(-settings.link_mode_masks_nwords);
    if (settings.link_mode_masks_nwords <= 0 || !ask(socket.get(), name, settings)) {
        return std::nullopt;
    }
    MediumFacts facts;
    if (settings.speed != 0 && settings.speed <= INT32_MAX) { // SPEED_UNKNOWN is all ones
        facts.megabitsPerSecond = settings.speed;
    }
    if (settings.duplex == DUPLEX_FULL || settings.duplex == DUPLEX_HALF) {
        facts.fullDuplex = settings.duplex == DUPLEX_FULL;
    }
    facts.port = settings.port;
    return facts;
}

std::optional<MediumFacts> readMediumFiles(const LinuxRoot& root, const std::string& name) {
    const std::string folder = root.path("/sys/class/net/") + name;
    const auto speed = readBytes(folder + "/speed");
    const auto duplex = readBytes(folder + "/duplex");
    if (!speed.has_value() && !duplex.has_value()) {
        return std::nullopt;
    }
    MediumFacts facts;
    // "-1" for an unknown speed is no number that this reads.
    const auto megabits = parse::singleNumber(speed.value_or(std::string()));
    if (megabits.value_or(0) != 0 && *megabits <= INT32_MAX) {
        facts.megabitsPerSecond = static_cast<std::int64_t>(*megabits);
    }
    const auto mode = parse::singleText(duplex.value_or(std::string()));
    if (mode == "full" || mode == "half") {
        facts.fullDuplex = mode == "full";
    }
    return facts;
}

} // namespace qk::platform
