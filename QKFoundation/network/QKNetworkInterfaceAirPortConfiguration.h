// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"

namespace qk {

/// The protocol `QKNetworkInterfaceAirPortConfiguration`: a wireless interface's radio. Threads: may be read anywhere.
class QK_EXPORT QKNetworkInterfaceAirPortConfiguration : public NSObject {
public:
    ~QKNetworkInterfaceAirPortConfiguration() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `powerStatus`. Whether the radio is on.
    [[nodiscard]] virtual bool powerStatus() const = 0;

    /// `airPlay`. Whether it carries sound or pictures to another device; false on Linux.
    [[nodiscard]] virtual bool airPlay() const = 0;

    /// `ssid`. The name of the network that it is in; "" while it is in none.
    [[nodiscard]] virtual const NSString& ssid() const = 0;
};

} // namespace qk
