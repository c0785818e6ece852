// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInterfaceIPv6Configuration.h"

namespace qk {

QKNetworkInterfaceIPv6Configuration::~QKNetworkInterfaceIPv6Configuration() = default;

const ProtocolDescription& QKNetworkInterfaceIPv6Configuration::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKNetworkInterfaceIPv6Configuration")
                                                        .property("configMethod", "configMethod")
                                                        .property("configMethodString", "configMethodString")
                                                        .property("adresses", "adresses")
                                                        .property("prefixLengths", "prefixLengths")
                                                        .property("routerAddress", "routerAddress")
                                                        .property("networkSignature", "networkSignature")
                                                        .build();
    return description;
}

} // namespace qk
