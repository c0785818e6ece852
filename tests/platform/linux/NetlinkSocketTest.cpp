// SPDX-License-Identifier: Apache-2.0
// What the running kernel answers, whatever network it has.
#include "QKFoundation/platform/linux/NetlinkSocket.h"

#include "QKFoundation/platform/linux/NetlinkNetwork.h"

#include "tests/platform/linux/NetlinkBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <linux/genetlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

constexpr int kNoProtocol = 31; // the last one, which no kernel has

TEST(NetlinkSocket, WithoutAConnectionEveryQuestionFails) {
    NetlinkSocket socket(kNoProtocol);
    EXPECT_FALSE(socket.isOpen());
    EXPECT_FALSE(socket.ask(NetlinkRequest(RTM_GETLINK, 0, ifinfomsg{}), [](const parse::NetlinkMessage&) { FAIL(); }));
    int restarts = 0;
    EXPECT_FALSE(socket.dump(
        NetlinkRequest(RTM_GETLINK, NLM_F_DUMP, ifinfomsg{}), [&] { ++restarts; },
        [](const parse::NetlinkMessage&) { FAIL(); }));
    EXPECT_EQ(restarts, 1);
}

class HostNetlink : public testing::Test {
protected:
    void SetUp() override {
        if (!NetlinkSocket(NETLINK_ROUTE).isOpen()) {
            GTEST_SKIP() << "the kernel allows no netlink here";
        }
    }
};

TEST_F(HostNetlink, ARefusalHasItsReason) {
    NetlinkSocket socket(NETLINK_ROUTE);
    ifinfomsg nobody{};
    nobody.ifi_index = 0x7FFFFFF0;
    EXPECT_FALSE(socket.ask(NetlinkRequest(RTM_GETLINK, 0, nobody), [](const parse::NetlinkMessage&) { FAIL(); }));
    EXPECT_EQ(errno, ENODEV);
}

TEST_F(HostNetlink, AnswersComeOneAfterAnotherOverOneConnection) {
    NetlinkSocket socket(NETLINK_ROUTE);
    for (int round = 0; round < 3; ++round) {
        int links = 0;
        EXPECT_TRUE(socket.dump(
            NetlinkRequest(RTM_GETLINK, NLM_F_DUMP, ifinfomsg{}), [&] { links = 0; },
            [&](const parse::NetlinkMessage& message) { links += message.type == RTM_NEWLINK ? 1 : 0; }));
        EXPECT_GE(links, 1);
        ifinfomsg first{};
        first.ifi_index = 1;
        int answers = 0;
        EXPECT_TRUE(
            socket.ask(NetlinkRequest(RTM_GETLINK, 0, first), [&](const parse::NetlinkMessage&) { ++answers; }));
        EXPECT_EQ(answers, 1);
    }
}

TEST_F(HostNetlink, AttributesOfAQuestionReachTheKernel) {
    NetlinkSocket socket(NETLINK_GENERIC);
    if (!socket.isOpen()) {
        GTEST_SKIP() << "no generic netlink here";
    }
    genlmsghdr command{};
    command.cmd = CTRL_CMD_GETFAMILY;
    command.version = 1;
    NetlinkRequest request(GENL_ID_CTRL, 0, command);
    request.append(CTRL_ATTR_FAMILY_NAME, std::string_view("nlctrl"));
    std::uint16_t family = 0;
    EXPECT_TRUE(socket.ask(request, [&](const parse::NetlinkMessage& message) {
        const parse::Bytes attributes = parse::attributesBehind(message.payload, sizeof(genlmsghdr));
        family = parse::leading<std::uint16_t>(parse::attributePayload(attributes, CTRL_ATTR_FAMILY_ID)).value_or(0);
    }));
    EXPECT_EQ(family, GENL_ID_CTRL);
}

TEST(NetlinkRequest, IsNoLongerThanAQuestion) {
    NetlinkRequest request(RTM_GETLINK, 0, ifinfomsg{});
    request.append(IFLA_IFNAME, std::string_view("eth0"));
    EXPECT_THROW(request.append(IFLA_IFNAME, std::string(200, 'x')), std::length_error);
}

// Root may send messages to anybody's connection. The one under test is the first of this process, so it has the
// process's number.
TEST_F(HostNetlink, MessagesOfAnotherProgramAreNotTheKernels) {
    NetlinkSocket socket(NETLINK_ROUTE);
    ifinfomsg first{};
    first.ifi_index = 1;
    EXPECT_TRUE(socket.ask(NetlinkRequest(RTM_GETLINK, 0, first), [](const parse::NetlinkMessage&) {}));
    const UniqueFD forger(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    sockaddr_nl target{};
    target.nl_family = AF_NETLINK;
    target.nl_pid = static_cast<std::uint32_t>(::getpid());
    const tests::ByteVector forged = tests::message(NLMSG_ERROR, tests::bytesOf(std::int32_t{-EPERM}), 2);
    if (::sendto(forger.get(), forged.data(), forged.size(), 0, reinterpret_cast<const sockaddr*>(&target),
                 sizeof(target)) < 0) {
        GTEST_SKIP() << "not allowed to send to others";
    }
    int answers = 0;
    EXPECT_TRUE(socket.ask(NetlinkRequest(RTM_GETLINK, 0, first), [&](const parse::NetlinkMessage& message) {
        answers += message.type == RTM_NEWLINK ? 1 : 0;
    }));
    EXPECT_EQ(answers, 1);
}

TEST_F(HostNetlink, LinksAreThoseThatTheCLibraryLists) {
    const std::unique_ptr<struct if_nameindex, decltype(&::if_freenameindex)> listed(::if_nameindex(),
                                                                                     &::if_freenameindex);
    ASSERT_NE(listed, nullptr);
    std::map<std::int32_t, std::string> expected;
    for (const struct if_nameindex* entry = listed.get(); entry->if_index != 0; ++entry) {
        expected.emplace(static_cast<std::int32_t>(entry->if_index), entry->if_name);
    }
    const NetworkSnapshot network;
    std::map<std::int32_t, std::string> found;
    for (const NetworkLink& link : network.kernel().links) {
        found.emplace(link.index, link.name);
        EXPECT_EQ(network.link(link.name), &link);
        EXPECT_EQ(network.link(link.index), &link);
    }
    EXPECT_EQ(found, expected);
}

TEST_F(HostNetlink, ANeighbourThatIsNotThereHasNoHardwareAddress) {
    NetlinkSocket socket(NETLINK_ROUTE);
    EXPECT_EQ(readNeighbour(socket, 0x7FFFFFF0, tests::internetAddress("192.0.2.1")), std::nullopt);
    EXPECT_EQ(readNeighbour(socket, 1, tests::internetAddress("2001:db8::1")), std::nullopt);
}

TEST_F(HostNetlink, ALinkThatIsNotThereHasNoMedium) {
    const NetworkSnapshot network;
    NetworkLink link;
    for (const char* const name : {"", "qk-none", "a-name-that-is-too-long-for-a-link"}) {
        link.name = name;
        EXPECT_EQ(network.medium(link), std::nullopt) << name;
    }
}

} // namespace
} // namespace qk::platform
