// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/network/Register.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace qk::bench {
namespace {

/// What the kernel costs: lists of links, addresses and routes of the main table, asked for as cheaply as it can be
/// done and not looked at beyond the bounds of messages.
class BareDump {
public:
    BareDump() : socket_(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {
        const int on = 1;
        ::setsockopt(socket_, SOL_NETLINK, NETLINK_GET_STRICT_CHK, &on, sizeof(on));
    }
    BareDump(const BareDump&) = delete;
    BareDump& operator=(const BareDump&) = delete;
    ~BareDump() { ::close(socket_); }

    std::size_t readAll() {
        ifinfomsg link{};
        rtmsg route{};
        route.rtm_table = RT_TABLE_MAIN;
        route.rtm_type = RTN_UNICAST;
        return dump(RTM_GETLINK, &link, sizeof(link), true) + dump(RTM_GETADDR, &address_, sizeof(address_), false) +
               dump(RTM_GETROUTE, &route, sizeof(route), false);
    }

private:
    std::size_t dump(std::uint16_t type, const void* fixed, std::size_t length, bool withoutStatistics) {
        alignas(nlmsghdr) std::array<std::byte, 64> request{};
        nlmsghdr header{};
        header.nlmsg_type = type;
        header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
        std::size_t total = NLMSG_LENGTH(length);
        std::memcpy(request.data() + NLMSG_HDRLEN, fixed, length);
        if (withoutStatistics) {
            const rtattr attribute{RTA_LENGTH(sizeof(std::uint32_t)), IFLA_EXT_MASK};
            const std::uint32_t mask = RTEXT_FILTER_SKIP_STATS;
            std::memcpy(request.data() + total, &attribute, sizeof(attribute));
            std::memcpy(request.data() + total + sizeof(attribute), &mask, sizeof(mask));
            total += RTA_LENGTH(sizeof(mask));
        }
        header.nlmsg_len = static_cast<std::uint32_t>(total);
        std::memcpy(request.data(), &header, sizeof(header));
        ::send(socket_, request.data(), total, 0);
        return receive();
    }

    std::size_t receive() {
        std::size_t messages = 0;
        for (;;) {
            const ssize_t count = ::recv(socket_, buffer_.get(), kCapacity, 0);
            if (count <= 0) {
                return 0;
            }
            auto left = static_cast<std::uint32_t>(count);
            const auto* message = reinterpret_cast<const nlmsghdr*>(buffer_.get());
            for (; NLMSG_OK(message, left); message = NLMSG_NEXT(message, left)) {
                if (message->nlmsg_type == NLMSG_DONE || message->nlmsg_type == NLMSG_ERROR) {
                    return messages;
                }
                ++messages;
            }
        }
    }

    static constexpr std::size_t kCapacity = std::size_t{32} << 10U;
    int socket_;
    ifaddrmsg address_{};
    std::unique_ptr<std::byte[]> buffer_ = std::make_unique_for_overwrite<std::byte[]>(kCapacity);
};

const bool kFloor = compete("floor", [](std::size_t) { benchmark::DoNotOptimize(BareDump().readAll()); });

} // namespace
} // namespace qk::bench
