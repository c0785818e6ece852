// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/Host.h"

#include <utility>

namespace qk::platform {

/// The user's name is that of the password entry (environment variables can be forged). The computer's name is the
/// "pretty" one: PRETTY_HOSTNAME of /etc/machine-info, else what org.freedesktop.hostname1 says if it runs on the
/// system bus; it is never started, and asked for 200 ms at most.
class LinuxHost final : public Host {
public:
    explicit LinuxHost(LinuxRoot root = {}) : root_(std::move(root)) {}

    [[nodiscard]] std::optional<NSString> userName() const override;
    [[nodiscard]] std::optional<NSString> localizedName() const override;

private:
    LinuxRoot root_;
};

} // namespace qk::platform
