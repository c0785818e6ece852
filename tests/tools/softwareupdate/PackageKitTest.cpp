// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BusConnection.h"

#include "tests/platform/linux/FakeBus.h"
#include "tools/softwareupdate/UpdateSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace qk::softwareupdate {
namespace {

using tests::FakeBus;

constexpr const char* kPath = "/1_abcdef";
constexpr std::uint32_t kNormal = 5;
constexpr std::uint32_t kSecurity = 8;
constexpr std::uint32_t kBlocked = 9;
constexpr std::uint32_t kSuccess = 1;
constexpr std::uint32_t kFailed = 2;

platform::UniqueBusMessage signal(sd_bus* bus, const char* member) {
    sd_bus_message* made = nullptr;
    sd_bus_message_new_signal(bus, &made, kPath, "org.freedesktop.PackageKit.Transaction", member);
    sd_bus_message_set_sender(made, FakeBus::kServiceName);
    return platform::UniqueBusMessage(made);
}

void package(sd_bus* bus, std::uint32_t info, const char* identifier) {
    const auto message = signal(bus, "Package");
    sd_bus_message_append(message.get(), "uss", info, identifier, "A summary");
    sd_bus_send(bus, message.get(), nullptr);
}

void finished(sd_bus* bus, std::uint32_t exit) {
    const auto message = signal(bus, "Finished");
    sd_bus_message_append(message.get(), "uu", exit, 12U);
    sd_bus_send(bus, message.get(), nullptr);
}

// PackageKit as it answers; `list` sends a transaction's signals.
FakeBus::Service packageKit(std::function<void(sd_bus*)> list) {
    return [list = std::move(list)](sd_bus* bus, sd_bus_message* call) {
        const std::string_view member = sd_bus_message_get_member(call);
        if (member == "CreateTransaction") {
            return sd_bus_reply_method_return(call, "o", kPath);
        }
        if (member != "GetUpdates" || std::string_view(sd_bus_message_get_path(call)) != kPath) {
            return -1;
        }
        const int replied = sd_bus_reply_method_return(call, "");
        list(bus);
        return replied;
    };
}

TEST(PackageKit, ThatDoesNotRunIsNoSource) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* call) { return FakeBus::serviceUnknown(call); });
    EXPECT_EQ(updatesOfPackageKit(), std::nullopt);
}

TEST(PackageKit, WithoutUpdatesGivesAnEmptyList) {
    const FakeBus bus(packageKit([](sd_bus* connection) { finished(connection, kSuccess); }));
    EXPECT_EQ(updatesOfPackageKit(), PendingUpdates());
}

TEST(PackageKit, ListsWhatWillBeInstalled) {
    const FakeBus bus(packageKit([](sd_bus* connection) {
        package(connection, kNormal, "bash;5.2.15-2+b13;amd64;debian");
        package(connection, kBlocked, "held;1-2;amd64;debian");
        package(connection, kSecurity | 0x10000U, "vim;2:9.1-1;amd64;debian");
        package(connection, kNormal, "no identifier");
        finished(connection, kSuccess);
    }));
    EXPECT_EQ(updatesOfPackageKit(),
              (PendingUpdates{{"bash", "5.2.15-2+b13", std::nullopt, false}, {"vim", "2:9.1-1", std::nullopt, false}}));
}

TEST(PackageKit, ListsWhatNewerDaemonsSendAtOnce) {
    const FakeBus bus(packageKit([](sd_bus* connection) {
        const auto message = signal(connection, "Packages");
        sd_bus_message_append(message.get(), "a(uss)", 2, kNormal, "a;1;all;x", "", kNormal, "b;2;all;x", "");
        sd_bus_send(connection, message.get(), nullptr);
        finished(connection, kSuccess);
    }));
    EXPECT_EQ(updatesOfPackageKit(),
              (PendingUpdates{{"a", "1", std::nullopt, false}, {"b", "2", std::nullopt, false}}));
}

TEST(PackageKit, TransactionThatFailsIsNoSource) {
    const FakeBus bus(packageKit([](sd_bus* connection) {
        package(connection, kNormal, "bash;5.2.15-2+b13;amd64;debian");
        finished(connection, kFailed);
    }));
    EXPECT_EQ(updatesOfPackageKit(), std::nullopt);
}

TEST(PackageKit, DaemonThatDiesIsNoSource) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* call) {
        return std::string_view(sd_bus_message_get_member(call)) == "CreateTransaction"
                   ? sd_bus_reply_method_return(call, "o", kPath)
                   : -1;
    });
    EXPECT_EQ(updatesOfPackageKit(), std::nullopt);
}

} // namespace
} // namespace qk::softwareupdate
