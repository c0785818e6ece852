// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkBus.h"

#include "QKFoundation/platform/linux/BusReading.h"
#include "QKFoundation/platform/linux/Variables.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

constexpr const char* kNetworkManager = "org.freedesktop.NetworkManager";
constexpr const char* kResolved = "org.freedesktop.resolve1";

// Asking whether the socket is there costs less than trying to connect to it.
bool mayHaveSystemBus() {
    return filledVariable(processVariable, "DBUS_SYSTEM_BUS_ADDRESS").has_value() ||
           ::access("/run/dbus/system_bus_socket", F_OK) == 0;
}

UniqueBusMessage newCall(sd_bus* bus, const char* service, const char* path, const char* interface,
                         const char* method) {
    sd_bus_message* call = nullptr;
    const bool isMade = sd_bus_message_new_method_call(bus, &call, service, path, interface, method) >= 0;
    return UniqueBusMessage(isMade ? call : nullptr);
}

// The one dictionary that an answer consists of.
std::optional<BusDictionary> dictionaryOf(const UniqueBusMessage& answer) {
    std::optional<BusValue> value = answer ? readBusValue(answer.get()) : std::nullopt;
    auto* dictionary = value.has_value() ? std::get_if<BusDictionary>(&value->held) : nullptr;
    return dictionary != nullptr ? std::optional(std::move(*dictionary)) : std::nullopt;
}

// The address that the elements `family` and `bytes` of a structure are.
std::optional<InternetAddress> addressOf(const BusValue& family, const BusValue& bytes) {
    constexpr std::int64_t kIPv4 = 2; // AF_INET and AF_INET6, whose numbers are part of the interface
    constexpr std::int64_t kIPv6 = 10;
    const auto* number = family.as<std::int64_t>();
    const auto* content = bytes.as<std::string>();
    InternetAddress address;
    if (number == nullptr || content == nullptr ||
        !((*number == kIPv4 && content->size() == 4) || (*number == kIPv6 && content->size() == 16))) {
        return std::nullopt;
    }
    address.family = *number == kIPv4 ? AddressFamily::IPv4 : AddressFamily::IPv6;
    std::ranges::transform(*content, address.bytes.begin(), [](char byte) { return static_cast<std::uint8_t>(byte); });
    return address;
}

// DNS: link, family, address; Domains: link, domain, whether names are only routed by it.
LinkNameServers linkNameServers(const BusDictionary& properties) {
    LinkNameServers result;
    const auto forEach = [&properties](std::string_view property, auto&& take) {
        const auto* rows = find<BusList>(properties, property);
        for (const BusValue& value : rows != nullptr ? *rows : BusList()) {
            const auto* row = value.as<BusList>();
            const auto* link = row != nullptr && row->size() == 3 ? row->front().as<std::int64_t>() : nullptr;
            if (link != nullptr && *link > 0) {
                take(static_cast<std::int32_t>(*link), *row);
            }
        }
    };
    forEach("DNS", [&result](std::int32_t link, const BusList& row) {
        if (const auto address = addressOf(row[1], row[2]); address.has_value()) {
            result[link].addresses.push_back(address->text());
        }
    });
    forEach("Domains", [&result](std::int32_t link, const BusList& row) {
        const auto* domain = row[1].as<std::string>();
        const auto* isRouteOnly = row[2].as<bool>();
        if (domain != nullptr && isRouteOnly != nullptr && !*isRouteOnly) {
            result[link].domains.push_back(*domain);
        }
    });
    return result;
}

class SystemNetworkBus final : public NetworkBus {
public:
    explicit SystemNetworkBus(std::chrono::milliseconds limit) : limit_(limit) {}

    [[nodiscard]] std::optional<networkmanager::Facts> networkManager() override;
    [[nodiscard]] std::optional<LinkNameServers> resolved() override;

private:
    [[nodiscard]] sd_bus* bus();
    [[nodiscard]] std::optional<BusDictionary> ask(sd_bus* bus, const UniqueBusMessage& call);

    const std::chrono::milliseconds limit_;
    std::mutex mutex_; // of what follows
    bool isOpened_ = false;
    UniqueBus bus_;
    BusDeadline deadline_;
};

// Null when there is none. Time is given to those who answer: what one service has used up another one does not get, so
// that all together never take longer.
sd_bus* SystemNetworkBus::bus() {
    if (!std::exchange(isOpened_, true) && mayHaveSystemBus()) {
        deadline_ = std::chrono::steady_clock::now() + limit_;
        bus_ = openSystemBus();
    }
    return bus_.get();
}

std::optional<BusDictionary> SystemNetworkBus::ask(sd_bus* bus, const UniqueBusMessage& call) {
    return call ? dictionaryOf(callOnBus(bus, call.get(), deadline_)) : std::nullopt;
}

std::optional<networkmanager::Facts> SystemNetworkBus::networkManager() {
    const std::scoped_lock lock(mutex_);
    sd_bus* const connection = bus();
    if (connection == nullptr) {
        return std::nullopt;
    }
    const auto objects = ask(connection, newCall(connection, kNetworkManager, "/org/freedesktop",
                                                 "org.freedesktop.DBus.ObjectManager", "GetManagedObjects"));
    if (!objects.has_value()) {
        return std::nullopt;
    }
    std::vector<UniqueBusMessage> calls;
    for (const std::string& path : networkmanager::connectionPaths(*objects)) {
        calls.push_back(newCall(connection, kNetworkManager, path.c_str(),
                                "org.freedesktop.NetworkManager.Settings.Connection", "GetSettings"));
    }
    const auto answers = callAllOnBus(connection, calls, deadline_);
    if (!answers.has_value()) {
        return std::nullopt;
    }
    networkmanager::Facts facts;
    facts.active = networkmanager::activeConnections(*objects);
    for (const UniqueBusMessage& answer : *answers) {
        // One that has been removed meanwhile, or that this user may not see, does not answer.
        const auto settings = dictionaryOf(answer);
        auto connectionFacts = settings.has_value() ? networkmanager::connection(*settings) : std::nullopt;
        if (connectionFacts.has_value()) {
            facts.connections.push_back(*std::move(connectionFacts));
        }
    }
    return facts;
}

std::optional<LinkNameServers> SystemNetworkBus::resolved() {
    const std::scoped_lock lock(mutex_);
    sd_bus* const connection = bus();
    if (connection == nullptr) {
        return std::nullopt;
    }
    const UniqueBusMessage call =
        newCall(connection, kResolved, "/org/freedesktop/resolve1", "org.freedesktop.DBus.Properties", "GetAll");
    if (!call || sd_bus_message_append(call.get(), "s", "org.freedesktop.resolve1.Manager") < 0) {
        return std::nullopt;
    }
    const auto properties = ask(connection, call);
    return properties.has_value() ? std::optional(linkNameServers(*properties)) : std::nullopt;
}

} // namespace

std::unique_ptr<NetworkBus> makeSystemNetworkBus(std::chrono::milliseconds limit) {
    return std::make_unique<SystemNetworkBus>(limit);
}

} // namespace qk::platform
