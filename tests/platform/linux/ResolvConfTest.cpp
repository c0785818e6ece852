// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/ResolvConf.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform::parse {
namespace {

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

TEST(ResolvConf, TextWithoutServersTellsNothing) {
    for (const std::string_view text :
         {""sv, "\n"sv, "# nameserver 192.0.2.1\n"sv, "; nameserver 192.0.2.1\n"sv, "options edns0\n"sv,
          "nameserver\n"sv, "nameserver \n"sv, "search\n"sv, " nameserver 192.0.2.1\n"sv, "nameserver192.0.2.1\n"sv}) {
        EXPECT_EQ(resolvConf(text), ResolvConf()) << text;
    }
}

TEST(ResolvConf, ServersStandInTheirOrder) {
    const ResolvConf conf = resolvConf("nameserver 192.0.2.1\nnameserver\t2001:db8::1 # second\r\n"
                                       "nameserver fe80::1%eth0\nnameserver ::1");
    EXPECT_EQ(conf.nameServers, (Texts{"192.0.2.1", "2001:db8::1", "fe80::1%eth0", "::1"}));
}

TEST(ResolvConf, ServerThatIsNoAddressIsLeftOut) {
    for (const std::string_view server :
         {"dns.example"sv, "192.0.2"sv, "192.0.2.256"sv, "192.0.2.1#53"sv, "[2001:db8::1]"sv, "fe80::1%"sv,
          "192.0.2.1%eth0"sv, "fe80::1%a/b"sv, "192.0.2.1\0x"sv, "::1\0"sv}) {
        EXPECT_TRUE(resolvConf("nameserver " + std::string(server) + "\n").nameServers.empty()) << server;
    }
}

TEST(ResolvConf, LastListOfDomainsCounts) {
    EXPECT_EQ(resolvConf("search a.example b.example\nsearch c.example\td.example\n").searchDomains,
              (Texts{"c.example", "d.example"}));
    EXPECT_EQ(resolvConf("search a.example b.example\ndomain c.example d.example\n").searchDomains, Texts{"c.example"});
    EXPECT_EQ(resolvConf("domain c.example\nsearch a.example b.example\n").searchDomains,
              (Texts{"a.example", "b.example"}));
    EXPECT_EQ(resolvConf("search a.example\nsearch\n").searchDomains, Texts{"a.example"});
}

TEST(ResolvConf, RootDomainIsNothingToSearchIn) {
    EXPECT_TRUE(resolvConf("search .\n").searchDomains.empty());
    EXPECT_EQ(resolvConf("search . a.example\n").searchDomains, Texts{"a.example"});
}

TEST(ResolvConf, StubOfThisMachineIsKnown) {
    EXPECT_FALSE(namesOnlyLocalStub(resolvConf("")));
    EXPECT_TRUE(namesOnlyLocalStub(resolvConf("nameserver 127.0.0.53\n")));
    EXPECT_TRUE(namesOnlyLocalStub(resolvConf("nameserver 127.0.0.54\n")));
    EXPECT_FALSE(namesOnlyLocalStub(resolvConf("nameserver 127.0.0.1\n")));
    EXPECT_FALSE(namesOnlyLocalStub(resolvConf("nameserver 127.0.0.53\nnameserver 192.0.2.1\n")));
}

TEST(ServerAddress, LosesItsPortAndItsName) {
    const struct {
        std::string_view text;
        std::optional<std::string> address;
    } rows[] = {
        {"192.0.2.1", "192.0.2.1"},
        {"192.0.2.1:53", "192.0.2.1"},
        {"192.0.2.1#dns.example", "192.0.2.1"},
        {"192.0.2.1:853%eth0#dns.example", "192.0.2.1"},
        {"2001:db8::1", "2001:db8::1"},
        {"2001:db8::1#dns.example", "2001:db8::1"},
        {"[2001:db8::1]", "2001:db8::1"},
        {"[2001:db8::1]:53", "2001:db8::1"},
        {"[fe80::1]:53%eth0#dns.example", "fe80::1%eth0"},
        {"fe80::1%2", "fe80::1%2"},
        {"", std::nullopt},
        {"#dns.example", std::nullopt},
        {"[2001:db8::1", std::nullopt},
        {"[2001:db8::1]53", std::nullopt},
        {"192.0.2.1:", std::nullopt},
        {"192.0.2.1:65536", std::nullopt},
        {"192.0.2.1:dns", std::nullopt},
        {"dns.example:53", std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(serverAddressWithPort(row.text), row.address) << row.text;
    }
}

} // namespace
} // namespace qk::platform::parse
