// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetlinkNetwork.h"
#include "QKFoundation/platform/linux/parse/Netlink.h"
#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"
#include "QKFoundation/platform/linux/parse/WirelessMessages.h"

#include "tests/fuzz/linux/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

/// Answers of the kernel: every message through every reader, and the bytes themselves as a message's payload. What was
/// read keeps the promises of its records.
namespace {

using qk::fuzz::require;
using namespace qk::platform;

void checkAttributes(parse::Bytes bytes, int depth) {
    parse::forEachAttribute(bytes, [&](const parse::NetlinkAttribute& attribute) {
        require(attribute.type < 0x4000 && attribute.payload.size() <= bytes.size());
        if (depth < 4) {
            checkAttributes(attribute.payload, depth + 1);
        }
    });
}

void checkPayload(parse::Bytes payload, KernelNetwork& network) {
    checkAttributes(payload, 0);
    if (auto link = parse::link(payload)) {
        require(link->index > 0 && !link->name.empty() && link->maximumMTU != 0U);
        network.links.push_back(*std::move(link));
    }
    if (const auto address = parse::address(payload)) {
        require(address->link > 0 && !address->address.text().empty());
        network.addresses.push_back(*address);
    }
    const std::size_t before = network.defaultRoutes.size();
    parse::appendDefaultRoutes(payload, network.defaultRoutes);
    require(std::all_of(network.defaultRoutes.begin() + static_cast<std::ptrdiff_t>(before),
                        network.defaultRoutes.end(),
                        [](const NetworkRoute& route) { return route.nextHop != 0 || route.link > 0; }));
    const auto hop = parse::nextHop(payload);
    require(!hop.has_value() || hop->members.size() <= payload.size() / 8);
    const auto neighbour = parse::neighbourHardwareAddress(payload);
    require(!neighbour.has_value() || neighbour->size() % 3 == 2);
    static_cast<void>(parse::genericFamily(payload));
    const auto interface = parse::wirelessInterface(payload);
    require(!interface.has_value() || interface->ssid != "");
    require(parse::stationBitRate(payload).value_or(1) > 0);
}

void checkOrder(KernelNetwork network) {
    arrange(network);
    require(std::ranges::is_sorted(network.links, std::ranges::less_equal(), &NetworkLink::index));
    require(std::ranges::is_sorted(network.addresses, {}, &NetworkAddress::link));
    require(std::ranges::is_sorted(network.defaultRoutes, {}, &NetworkRoute::priority));
    const NetworkSnapshot snapshot(std::move(network), LinuxRoot("/nonexistent"));
    for (const NetworkLink& link : snapshot.kernel().links) {
        require(snapshot.link(link.index) == &link && snapshot.link(link.name) != nullptr);
    }
    for (const NetworkAddress& address : snapshot.kernel().addresses) {
        require(!snapshot.addresses(address.link).empty());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const parse::Bytes bytes = std::as_bytes(std::span(data, size));
    KernelNetwork network;
    std::size_t messages = 0;
    parse::Bytes rest = bytes;
    while (const auto message = parse::takeMessage(rest)) {
        ++messages;
        require(message->payload.size() < size && parse::errorNumber(*message) >= 0);
        checkPayload(message->payload, network);
    }
    require(rest.empty() && messages <= size / 16);
    checkPayload(bytes, network);
    checkOrder(std::move(network));
    parse::DumpProgress progress(size > 8 ? data[8] : 0);
    std::size_t visited = 0;
    static_cast<void>(progress.feed(bytes, [&visited](const parse::NetlinkMessage&) { ++visited; }));
    require(visited <= messages && progress.error() >= 0);
    return 0;
}
