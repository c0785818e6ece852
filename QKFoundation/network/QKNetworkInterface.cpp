// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInterface.h"

namespace qk {

QKNetworkInterface::~QKNetworkInterface() = default;

const ProtocolDescription& QKNetworkInterface::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKNetworkInterface")
                                                        .property("type", "type")
                                                        .property("name", "name")
                                                        .property("displayName", "displayName")
                                                        .property("builtin", "builtin")
                                                        .property("linkActive", "linkActive")
                                                        .property("linkSpeed", "linkSpeed")
                                                        .property("hardwareAddress", "hardwareAddress")
                                                        .property("hardwareModel", "hardwareModel")
                                                        .property("configuration", "configuration", "setConfiguration:")
                                                        .build();
    return description;
}

} // namespace qk
