// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInterfaceDNSConfiguration.h"

namespace qk {

QKNetworkInterfaceDNSConfiguration::~QKNetworkInterfaceDNSConfiguration() = default;

const ProtocolDescription& QKNetworkInterfaceDNSConfiguration::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKNetworkInterfaceDNSConfiguration")
                                                        .property("serverAdresses", "serverAdresses")
                                                        .property("domainName", "domainName")
                                                        .build();
    return description;
}

} // namespace qk
