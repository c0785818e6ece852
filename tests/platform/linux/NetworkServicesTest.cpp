// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkServices.h"

#include "QKFoundation/platform/linux/NetworkReader.h"
#include "QKFoundation/platform/linux/Networkd.h"

#include "tests/platform/linux/NetworkFacts.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using namespace tests;
using Manager = NetworkService::Manager;
using Texts = std::vector<std::string>;

struct NetworkServicesTest : ::testing::Test {
    TemporaryFolder folder;
    KernelNetwork kernel{
        {loopbackLink(), cardLink(2, "eth0"), networkLink(3, "br0", "bridge"), networkLink(4, "veth0", "veth")},
        {networkAddress(2, "192.0.2.2/24"), networkAddress(3, "fe80::1/64")},
        {defaultRoute(2, "192.0.2.1")}};

    NetworkServices read(std::unique_ptr<NetworkBus> bus = nullptr) const {
        return NetworkServices(std::make_shared<NetworkSnapshot>(kernel, LinuxRoot(folder.path())), std::move(bus));
    }
};

Texts interfaces(const NetworkServices& services) {
    Texts result;
    for (const NetworkService& service : services.all()) {
        result.push_back(service.interfaceName.utf8Lossy());
    }
    return result;
}

std::string text(const NSString* string) {
    return string != nullptr ? string->utf8Lossy() : "-";
}

networkmanager::Connection connection(std::string uuid, std::string interface) {
    networkmanager::Connection result;
    result.uuid = std::move(uuid);
    result.name = result.uuid;
    result.type = "802-3-ethernet";
    result.interfaceName = std::move(interface);
    return result;
}

TEST_F(NetworkServicesTest, MachineWithoutANetworkHasNone) {
    kernel = {};
    const NetworkServices services = read();
    EXPECT_TRUE(services.all().empty());
    EXPECT_EQ(services.service(u""), nullptr);
    EXPECT_EQ(services.primary(AddressFamily::IPv4), nullptr);
    EXPECT_TRUE(services.globalNameServers().isEmpty());
}

TEST_F(NetworkServicesTest, WithoutAManagerTheKernelsLinksAre) {
    const NetworkServices services = read();
    EXPECT_EQ(interfaces(services), (Texts{"eth0", "br0"}));
    const NetworkService& first = services.all().front();
    EXPECT_EQ(first.manager, Manager::Kernel);
    EXPECT_EQ(first.name, "eth0");
    EXPECT_TRUE(first.isEnabled);
    EXPECT_TRUE(first.isActive);
    EXPECT_EQ(text(first.type), "Ethernet");
    EXPECT_EQ(text(first.ipv4Method), "Manual");
    EXPECT_EQ(text(first.ipv6Method), "-");
    EXPECT_EQ(services.service(first.id.units()), &first);
}

TEST_F(NetworkServicesTest, LinkThatIsDownIsNotEnabled) {
    kernel.links[1].flags = 0;
    EXPECT_FALSE(read().all().front().isEnabled);
}

TEST_F(NetworkServicesTest, IdentifiersAreToldApart) {
    std::set<NSString> ids;
    const NetworkServices services = read();
    for (const NetworkService& service : services.all()) {
        ids.insert(service.id);
    }
    EXPECT_EQ(ids.size(), services.all().size());
}

TEST_F(NetworkServicesTest, BusWithoutAManagerIsTheKernelAlone) {
    EXPECT_EQ(interfaces(read(std::make_unique<ToldBus>(std::nullopt))), (Texts{"eth0", "br0"}));
}

TEST_F(NetworkServicesTest, LinksThatTheManagerLeavesAloneFollow) {
    const NetworkServices services =
        read(std::make_unique<ToldBus>(networkmanager::Facts{{connection("b", "br0"), connection("c", "")}, {}}));
    EXPECT_EQ(interfaces(services), (Texts{"br0", "", "eth0"}));
    EXPECT_EQ(services.all().back().manager, Manager::Kernel);
}

TEST_F(NetworkServicesTest, OrderByLinkPutsThoseWithoutLast) {
    const NetworkServices services = read(std::make_unique<ToldBus>(
        networkmanager::Facts{{connection("a", ""), connection("b", "br0"), connection("c", "eth0")}, {}}));
    Texts names;
    for (const NetworkService* service : services.byLink()) {
        names.push_back(service->name.utf8Lossy());
    }
    EXPECT_EQ(names, (Texts{"c", "b", "a"}));
}

TEST_F(NetworkServicesTest, PrimaryIsTheOneInUseOnTheLinkOfTheDefaultRoute) {
    networkmanager::Facts facts{{connection("a", "eth0"), connection("b", "eth0")}, {{"b", true, "eth0", {}, nullptr}}};
    const NetworkServices services = read(std::make_unique<ToldBus>(facts));
    ASSERT_NE(services.primary(AddressFamily::IPv4), nullptr);
    EXPECT_EQ(services.primary(AddressFamily::IPv4)->name, "b");
    EXPECT_EQ(services.primary(AddressFamily::IPv6), nullptr);
    EXPECT_FALSE(services.isPrimary(services.all()[0]));
    EXPECT_TRUE(services.isPrimary(services.all()[1]));
}

TEST_F(NetworkServicesTest, DefaultRouteOfTheNewerProtocolCountsWhereThereIsNoOther) {
    kernel.defaultRoutes = {defaultRoute(3, "fe80::9")};
    const NetworkServices services = read();
    EXPECT_TRUE(services.isPrimary(services.all()[1]));
    EXPECT_FALSE(services.isPrimary(services.all()[0]));
}

TEST_F(NetworkServicesTest, NameServersOfAFileAreOfTheDefaultRoute) {
    folder.write("etc/resolv.conf", "nameserver 192.0.2.53\nsearch a.example\n");
    const NetworkServices services = read();
    EXPECT_EQ(services.nameServers(services.all()[0]), (NameServers{{"192.0.2.53"}, {"a.example"}}));
    EXPECT_TRUE(services.nameServers(services.all()[1]).isEmpty());
    EXPECT_EQ(services.globalNameServers(), (NameServers{{"192.0.2.53"}, {"a.example"}}));
}

TEST_F(NetworkServicesTest, WithoutADefaultRouteTheFileIsTheMachines) {
    folder.write("etc/resolv.conf", "nameserver 192.0.2.53\n");
    kernel.defaultRoutes.clear();
    const NetworkServices services = read();
    EXPECT_TRUE(services.nameServers(services.all()[0]).isEmpty());
    EXPECT_EQ(services.globalNameServers().addresses, Texts{"192.0.2.53"});
}

TEST_F(NetworkServicesTest, LocalStubStandsForWhatIsBehindIt) {
    folder.write("etc/resolv.conf", "nameserver 127.0.0.53\nsearch .\n");
    {
        const NetworkServices services = read();
        EXPECT_EQ(services.nameServers(services.all()[0]).addresses, Texts{"127.0.0.53"});
    }
    folder.write("run/systemd/resolve/resolv.conf", "nameserver 192.0.2.53\nsearch a.example\n");
    const NetworkServices services = read();
    EXPECT_EQ(services.nameServers(services.all()[0]), (NameServers{{"192.0.2.53"}, {"a.example"}}));
}

TEST_F(NetworkServicesTest, ResolverTellsServersByLink) {
    folder.write("etc/resolv.conf", "nameserver 192.0.2.53\n");
    const NetworkServices services = read(std::make_unique<ToldBus>(
        std::nullopt, LinkNameServers{{3, {{"198.51.100.53"}, {}}}, {4, {{"203.0.113.53"}, {}}}}));
    EXPECT_EQ(services.nameServers(services.all()[0]).addresses, Texts{"192.0.2.53"});
    EXPECT_EQ(services.nameServers(services.all()[1]).addresses, Texts{"198.51.100.53"});
}

TEST_F(NetworkServicesTest, ManagersOwnServersGoFirst) {
    networkmanager::Facts facts{{connection("a", "eth0"), connection("b", "eth0")},
                                {{"a", true, "eth0", {{"192.0.2.54"}, {}}, nullptr}}};
    const NetworkServices services =
        read(std::make_unique<ToldBus>(facts, LinkNameServers{{2, {{"198.51.100.53"}, {}}}}));
    EXPECT_EQ(services.nameServers(services.all()[0]).addresses, Texts{"192.0.2.54"});
    EXPECT_TRUE(services.nameServers(services.all()[1]).isEmpty()); // not in use
}

TEST_F(NetworkServicesTest, WhoKnowsDomainsAloneLeavesTheServersToTheNext) {
    folder.write("etc/resolv.conf", "nameserver 192.0.2.53\nsearch file.example\n");
    networkmanager::Facts facts{
        {connection("a", "eth0"), connection("b", "br0")},
        {{"a", true, "eth0", {{}, {"a.example"}}, nullptr}, {"b", true, "br0", {{}, {"b.example"}}, nullptr}}};
    const LinkNameServers servers{{3, {{"192.0.2.54"}, {"resolved.example"}}}};
    const NetworkServices services = read(std::make_unique<ToldBus>(facts, servers));
    EXPECT_EQ(services.nameServers(services.all()[0]), (NameServers{{"192.0.2.53"}, {"a.example"}}));
    EXPECT_EQ(services.nameServers(services.all()[1]), (NameServers{{"192.0.2.54"}, {"b.example"}}));
}

TEST_F(NetworkServicesTest, ReadingHasOneList) {
    const NetworkReader reader{LinuxRoot(folder.path())};
    EXPECT_NE(reader.services(), reader.services());
    const auto outer = reader.beginReading();
    const auto services = reader.services();
    EXPECT_EQ(reader.services(), services);
    EXPECT_EQ(&services->snapshot(), reader.snapshot().get());
    {
        const auto inner = reader.beginReading();
        EXPECT_EQ(reader.services(), services);
    }
    EXPECT_EQ(reader.services(), services);
}

struct NetworkdTest : NetworkServicesTest {
    void manage(int index, const std::string& network, const std::string& more = "") {
        folder.write("run/systemd/netif/links/" + std::to_string(index),
                     "ADMIN_STATE=configured\nNETWORK_FILE=/etc/systemd/network/" + network + "\n" + more);
    }
};

TEST_F(NetworkdTest, WithoutItsFilesThereAreNone) {
    const NetworkSnapshot snapshot(kernel, LinuxRoot(folder.path()));
    EXPECT_TRUE(networkd::services(snapshot).empty());
    EXPECT_FALSE(networkd::lease(*snapshot.link(2), snapshot.root()).has_value());
}

TEST_F(NetworkdTest, LinksThatItManagesGoFirst) {
    manage(3, "bridge.network");
    manage(4, "veth.network");
    manage(1, "lo.network");
    manage(77, "gone.network");
    folder.write("run/systemd/netif/links/2", "ADMIN_STATE=unmanaged\n");
    folder.write("run/systemd/netif/links/x", "ADMIN_STATE=configured\n");
    const NetworkServices services = read();
    EXPECT_EQ(interfaces(services), (Texts{"br0", "veth0", "eth0"}));
    EXPECT_EQ(services.all()[0].manager, Manager::Networkd);
    EXPECT_EQ(services.all()[2].manager, Manager::Kernel);
}

TEST_F(NetworkdTest, SettingsSayTheMethods) {
    const struct {
        std::string settings;
        std::string ipv4;
        std::string ipv6;
    } rows[] = {{"[Network]\nDHCP=yes\n", "DHCP", "Automatic"},
                {"[Network]\nDHCP=ipv4\n", "DHCP", "-"},
                {"[Network]\nDHCP=ipv6\n", "Manual", "Automatic"},
                {"[Network]\nAddress=192.0.2.2/24\nAddress=2001:db8::2/64\n", "Manual", "Manual"},
                {"[Network]\nDHCP=ipv4\nAddress=192.0.2.2/24\n", "DHCP", "-"},
                {"[Network]\nLinkLocalAddressing=ipv4\n", "LinkLocal", "-"},
                {"[Network]\nIPv6AcceptRA=yes\nAddress=2001:db8::2/64\n", "Manual", "Automatic"},
                {"", "Manual", "-"}}; // as the kernel's facts show
    for (const auto& row : rows) {
        manage(2, "eth0.network");
        folder.write("etc/systemd/network/eth0.network", row.settings);
        const NetworkServices services = read();
        EXPECT_EQ(text(services.all()[0].ipv4Method), row.ipv4) << row.settings;
        EXPECT_EQ(text(services.all()[0].ipv6Method), row.ipv6) << row.settings;
    }
}

TEST_F(NetworkdTest, DropInsComeAfterTheFile) {
    manage(2, "eth0.network", "NETWORK_FILE_DROPINS=\"/etc/systemd/network/eth0.network.d/a.conf\"\n");
    folder.write("etc/systemd/network/eth0.network", "[Network]\nDHCP=no\n");
    folder.write("etc/systemd/network/eth0.network.d/a.conf", "[Network]\nDHCP=yes\n");
    EXPECT_EQ(text(read().all()[0].ipv4Method), "DHCP");
}

TEST_F(NetworkdTest, NameServersAndLeaseAreThoseOfTheLink) {
    manage(2, "eth0.network", "DNS=192.0.2.53\nDOMAINS=a.example\n");
    folder.write("run/systemd/netif/leases/2", "ROUTER=192.0.2.1\n");
    folder.write("etc/resolv.conf", "nameserver 127.0.0.53\n");
    const NetworkServices services = read();
    EXPECT_EQ(services.nameServers(services.all()[0]), (NameServers{{"192.0.2.53"}, {"a.example"}}));
    ASSERT_NE(services.lease(services.all()[0]), nullptr);
    EXPECT_EQ(services.lease(services.all()[0])->options.size(), 1U);
    EXPECT_EQ(services.lease(services.all()[1]), nullptr);
}

TEST_F(NetworkdTest, NetworkManagerGoesBeforeItAndLeavesItTheOtherLinks) {
    manage(2, "eth0.network");
    manage(3, "bridge.network");
    const NetworkServices services =
        read(std::make_unique<ToldBus>(networkmanager::Facts{{connection("a", "br0")}, {}}));
    EXPECT_EQ(interfaces(services), (Texts{"br0", "eth0"}));
    EXPECT_EQ(services.all()[0].manager, Manager::NetworkManager);
    EXPECT_EQ(services.all()[1].manager, Manager::Networkd);
}

} // namespace
} // namespace qk::platform
