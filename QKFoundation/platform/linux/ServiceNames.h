// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform {

/// The names of a service that no manager has given one.
struct ServiceNames {
    NSString interfaceName;
    NSString id;
};

/// Names services after their interfaces: the identifier is made of the machine's own (/etc/machine-id) and the
/// interface's name, so it stays the same as long as both do. Threads: one at a time.
class ServiceNamer {
public:
    explicit ServiceNamer(const LinuxRoot& root) : root_(root) {}

    /// The names for the interface with that name, in the kernel's bytes.
    [[nodiscard]] ServiceNames names(const std::string& interfaceName);

private:
    [[nodiscard]] ServiceNames make(std::string_view interfaceName);

    const LinuxRoot& root_;
    std::optional<std::string> machine_; // its identifier, once it has been read
};

/// The name-based UUID (RFC 4122, version 5, of SHA-1) of `name` in the name space `space` of 16 bytes, its letters
/// upper-case. Without cryptography it is the nil UUID, "00000000-...".
[[nodiscard]] std::string nameBasedUUID(std::string_view space, std::string_view name);

/// The 16 bytes that /etc/machine-id writes (machine-id(5)); 16 zero bytes for another content.
[[nodiscard]] std::string machineIdentifier(std::string_view content);

} // namespace qk::platform
