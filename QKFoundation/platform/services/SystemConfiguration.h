// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

namespace qk::platform {

/// The system's configuration store. Threads: any, at the same time.
class QK_EXPORT SystemConfiguration {
public:
    SystemConfiguration() = default;
    SystemConfiguration(const SystemConfiguration&) = delete;
    SystemConfiguration& operator=(const SystemConfiguration&) = delete;
    virtual ~SystemConfiguration();

    /// `SCDynamicStoreCopyComputerName`. The computer's name in the store; nothing when it holds none.
    [[nodiscard]] virtual std::optional<NSString> copyComputerName() const = 0;
};

} // namespace qk::platform
