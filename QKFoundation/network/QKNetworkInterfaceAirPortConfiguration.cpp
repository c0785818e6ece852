// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInterfaceAirPortConfiguration.h"

namespace qk {

QKNetworkInterfaceAirPortConfiguration::~QKNetworkInterfaceAirPortConfiguration() = default;

const ProtocolDescription& QKNetworkInterfaceAirPortConfiguration::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKNetworkInterfaceAirPortConfiguration")
                                                        .property("powerStatus", "powerStatus")
                                                        .property("airPlay", "airPlay")
                                                        .property("ssid", "ssid")
                                                        .build();
    return description;
}

} // namespace qk
