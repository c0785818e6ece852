// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInterfaceConfiguration.h"

namespace qk {

QKNetworkInterfaceConfiguration::~QKNetworkInterfaceConfiguration() = default;

const ProtocolDescription& QKNetworkInterfaceConfiguration::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKNetworkInterfaceConfiguration")
                                                        .property("ipv4Config", "ipv4Config")
                                                        .property("ipv6Config", "ipv6Config")
                                                        .property("dnsConfig", "dnsConfig")
                                                        .property("airPortConfig", "airPortConfig")
                                                        .build();
    return description;
}

} // namespace qk
