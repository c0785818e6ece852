// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKIONetworkInterface.h"

namespace qk {

QKIONetworkInterface::~QKIONetworkInterface() = default;

const ProtocolDescription& QKIONetworkInterface::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("QKIONetworkInterface")
                                                        .property("name", "name")
                                                        .property("builtin", "builtin")
                                                        .property("linkActive", "linkActive")
                                                        .property("linkSpeed", "linkSpeed")
                                                        .property("hardwareModel", "hardwareModel")
                                                        .build();
    return description;
}

} // namespace qk
