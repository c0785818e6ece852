// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInterfaceIPv4Configuration.h"

namespace qk {

QKNetworkInterfaceIPv4Configuration::~QKNetworkInterfaceIPv4Configuration() = default;

const ProtocolDescription& QKNetworkInterfaceIPv4Configuration::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKNetworkInterfaceIPv4Configuration")
                                                        .property("configMethod", "configMethod")
                                                        .property("configMethodString", "configMethodString")
                                                        .property("adresses", "adresses")
                                                        .property("subnetMasks", "subnetMasks")
                                                        .property("broadcastAddresses", "broadcastAddresses")
                                                        .property("routerAddress", "routerAddress")
                                                        .property("networkSignature", "networkSignature")
                                                        .build();
    return description;
}

} // namespace qk
