// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/values/NSString.h"

/// What the kernel's facts about a link say about its configuration. Texts are those of `schemaTexts`. Any thread.
namespace qk::platform::evidence {

/// Whether a link that nobody manages is a service: it has a device, or is a bond, a bridge or a VLAN, or has an
/// address that is good for more than the link itself. The loopback interface never is.
[[nodiscard]] bool isService(const NetworkLink& link, const NetworkSnapshot& snapshot);

/// The type of an interface: what the kernel calls it, else its hardware. Null for one that has no name here, such as a
/// tunnel or one end of a virtual cable.
[[nodiscard]] const NSString* interfaceType(const NetworkLink& link, const LinuxRoot& root);

/// How the link came by its IPv4 addresses; null without any.
[[nodiscard]] const NSString* ipv4Method(const NetworkLink& link, const NetworkSnapshot& snapshot);

/// Likewise for IPv6.
[[nodiscard]] const NSString* ipv6Method(const NetworkLink& link, const NetworkSnapshot& snapshot);

/// Whether the link has been brought up.
[[nodiscard]] bool isUp(const NetworkLink& link);

[[nodiscard]] bool isLoopback(const NetworkLink& link);

} // namespace qk::platform::evidence
