// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInfo.h"
#include "QKFoundation/network/internal/QKIONetworkInterfaceFactory.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceImpl.h"
#include "QKFoundation/network/internal/QKSCNetworkServiceFactory.h"
#include "QKFoundation/platform/services/Services.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace qk;
using nlohmann::json;

json described(const Value& value);

json described(const NSString& text) {
    return text.utf8Lossy();
}

json described(const NSArray& array) {
    json result = json::array();
    for (const Value& element : array) {
        result.push_back(described(element));
    }
    return result;
}

json described(const Value& value) {
    if (const auto* text = value.as<NSString>(); text != nullptr) {
        return described(*text);
    }
    if (const auto* number = value.as<NSNumber>(); number != nullptr) {
        return number->isBoolean() ? json(number->boolValue()) : json(number->integerValue());
    }
    if (const auto* array = value.as<NSArray>(); array != nullptr) {
        return described(*array);
    }
    if (const auto* dictionary = value.as<NSDictionary>(); dictionary != nullptr) {
        json result = json::object();
        for (const auto& [key, element] : *dictionary) {
            result[key.utf8Lossy()] = described(element);
        }
        return result;
    }
    return value.description().utf8Lossy();
}

template <typename T>
json described(const std::optional<T>& value) {
    return value.has_value() ? described(*value) : json();
}

json described(const std::shared_ptr<QKNetworkInterfaceIPv4Configuration>& config) {
    if (config == nullptr) {
        return {};
    }
    return {{"configMethod", config->configMethod()},
            {"configMethodString", described(config->configMethodString())},
            {"adresses", described(config->adresses())},
            {"subnetMasks", described(config->subnetMasks())},
            {"broadcastAddresses", described(config->broadcastAddresses())},
            {"routerAddress", described(config->routerAddress())},
            {"networkSignature", described(config->networkSignature())}};
}

json described(const std::shared_ptr<QKNetworkInterfaceIPv6Configuration>& config) {
    if (config == nullptr) {
        return {};
    }
    return {{"configMethod", config->configMethod()},
            {"configMethodString", described(config->configMethodString())},
            {"adresses", described(config->adresses())},
            {"prefixLengths", described(config->prefixLengths())},
            {"routerAddress", described(config->routerAddress())},
            {"networkSignature", described(config->networkSignature())}};
}

json described(const std::shared_ptr<QKNetworkInterfaceDNSConfiguration>& config) {
    if (config == nullptr) {
        return {};
    }
    return {{"serverAdresses", described(config->serverAdresses())}, {"domainName", described(config->domainName())}};
}

json described(const std::shared_ptr<QKNetworkInterfaceAirPortConfiguration>& config) {
    if (config == nullptr) {
        return {};
    }
    return {
        {"powerStatus", config->powerStatus()}, {"airPlay", config->airPlay()}, {"ssid", described(config->ssid())}};
}

json described(const QKNetworkInterface& interface) {
    const auto& configuration = interface.configuration();
    return {{"type", interface.type()},
            {"name", described(interface.name())},
            {"displayName", described(interface.displayName())},
            {"builtin", interface.builtin()},
            {"linkActive", interface.linkActive()},
            {"linkSpeed", interface.linkSpeed()},
            {"hardwareAddress", described(interface.hardwareAddress())},
            {"hardwareModel", described(interface.hardwareModel())},
            {"ipv4Config", described(configuration->ipv4Config())},
            {"ipv6Config", described(configuration->ipv6Config())},
            {"dnsConfig", described(configuration->dnsConfig())},
            {"airPortConfig", described(configuration->airPortConfig())}};
}

json described(const QKNetworkInfo::Interfaces& interfaces) {
    json result = json::array();
    for (const auto& interface : interfaces) {
        result.push_back(described(*interface));
    }
    return result;
}

json described(const QKSCNetworkInterface& interface) {
    return {{"minimalTransferUnit", interface.minimalTransferUnit()},
            {"maximalTransferUnit", interface.maximalTransferUnit()},
            {"name", described(interface.name())},
            {"type", described(interface.type())},
            {"hardwareAddress", described(interface.hardwareAddress())},
            {"activeMediumType", described(interface.activeMediumType())}};
}

json describedServices(const platform::Services& services) {
    json result = json::array();
    for (const auto& service : QKSCNetworkServiceFactory::networkServices(services)) {
        result.push_back({{"enabled", service->enabled()},
                          {"name", described(service->name())},
                          {"serviceId", described(service->serviceId())},
                          {"interface", service->interface() != nullptr ? described(*service->interface()) : json()}});
    }
    return result;
}

json describedHardware(const platform::Services& services) {
    json result = json::array();
    for (const auto& interface : QKIONetworkInterfaceFactory::hardwareInterfaces(services)) {
        result.push_back({{"name", described(interface->name())}, {"linkActive", interface->linkActive()}});
    }
    return result;
}

json describedStore(const platform::Services& services) {
    json result = json::object();
    const auto store = services.systemConfiguration->createDynamicStore(std::nullopt);
    for (const NSString& key : store->copyKeyList(".*").value_or(std::vector<NSString>())) {
        if (const auto value = store->copyValue(key)) {
            result[key.utf8Lossy()] = described(*value);
        }
    }
    return result;
}

json describedInterfaces() {
    const auto begin = std::chrono::steady_clock::now();
    json interfaces = described(QKNetworkInfo::networkInterfaces());
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    return {{"networkInterfaces", std::move(interfaces)}, {"seconds", seconds.count()}};
}

json describedMachine(const platform::Services& services) {
    json result = describedInterfaces();
    result["activeNetworkInterfaces"] = described(QKNetworkInfo::activeNetworkInterfaces());
    result["activeBuiltinNetworkInterfaces"] = described(QKNetworkInfo::activeBuiltinNetworkInterfaces());
    result["networkServices"] = describedServices(services);
    result["hardwareInterfaces"] = describedHardware(services);
    result["store"] = describedStore(services);
    return result;
}

// Lists the services, waits until the machine has been changed, and only then looks at their interfaces.
json describedLate(const platform::Services& services) {
    const auto listed = QKSCNetworkServiceFactory::enabledNetworkServices(services);
    std::cout << "listed" << std::endl;
    std::string line;
    std::getline(std::cin, line);
    json result = json::array();
    for (const auto& service : listed) {
        result.push_back(described(*QKNetworkInterfaceImpl::initWithSCNetworkService(service, services)));
    }
    return result;
}

} // namespace

/// Prints all that is known of the network, as JSON: once, or with "repeat" for each line of the input. With
/// "interfaces" it prints them and how long they took; with "late" it prints a line when it has listed the services,
/// and waits for one before it looks at their interfaces.
int main(int count, char** arguments) {
    const std::string_view mode = count > 1 ? arguments[1] : "";
    const auto services = platform::services();
    const auto print = [](const json& value) {
        std::cout << value.dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
    };
    if (mode == "late") {
        print(describedLate(*services));
    } else if (mode == "interfaces") {
        print(describedInterfaces());
    } else if (mode == "repeat") {
        for (std::string line; std::getline(std::cin, line);) {
            print(describedMachine(*services));
        }
    } else {
        print(describedMachine(*services));
    }
    return 0;
}
