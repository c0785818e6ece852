// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"

#include <cstdint>
#include <optional>

namespace qk {

/// The protocol `QKIONetworkInterface`: what the registry of devices tells about a network interface. Threads: may be
/// read anywhere.
class QKIONetworkInterface : public NSObject {
public:
    ~QKIONetworkInterface() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `name`. The BSD name; "" when the entry has none.
    [[nodiscard]] virtual const NSString& name() const = 0;

    /// `builtin`. Whether the entry says that it is built in.
    [[nodiscard]] virtual bool builtin() const = 0;

    /// `linkActive`. Whether the controller's link is up; false without a controller.
    [[nodiscard]] virtual bool linkActive() const = 0;

    /// `linkSpeed`. As the controller reports it; 0 when it does not, and without one.
    [[nodiscard]] virtual std::int64_t linkSpeed() const = 0;

    /// `hardwareModel`. The controller's vendor and model with a blank in between, which stays when either is missing;
    /// nothing without a controller.
    [[nodiscard]] virtual const std::optional<NSString>& hardwareModel() const = 0;
};

} // namespace qk
