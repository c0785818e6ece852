// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

namespace qk::platform {

/// Names of this host and of the user that this process runs as. Threads: any, at the same time.
class QK_EXPORT Host {
public:
    Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    virtual ~Host();

    /// `NSUserName`. The log-in name of the process's real user; nothing for a user without a password entry.
    [[nodiscard]] virtual std::optional<NSString> userName() const = 0;

    /// `NSHost` `currentHost` `localizedName`. The name that people gave this computer; nothing when nobody did.
    [[nodiscard]] virtual std::optional<NSString> localizedName() const = 0;
};

} // namespace qk::platform
