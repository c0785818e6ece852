// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>

namespace qk::platform {

/// The system's cryptography. Threads: any, at the same time.
class QK_EXPORT CommonCrypto {
public:
    using SHA1Digest = std::array<std::byte, 20>;

    CommonCrypto() = default;
    CommonCrypto(const CommonCrypto&) = delete;
    CommonCrypto& operator=(const CommonCrypto&) = delete;
    virtual ~CommonCrypto();

    /// `CC_SHA1`. The SHA-1 digest of `bytes`; nothing on a system without cryptography.
    [[nodiscard]] virtual std::optional<SHA1Digest> SHA1(std::span<const std::byte> bytes) const = 0;
};

} // namespace qk::platform
