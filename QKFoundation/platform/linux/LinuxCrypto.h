// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/CommonCrypto.h"

namespace qk::platform {

/// Cryptography through libcrypto. Threads: any, at the same time.
class LinuxCrypto final : public CommonCrypto {
public:
    [[nodiscard]] std::optional<SHA1Digest> SHA1(std::span<const std::byte> bytes) const override;
};

} // namespace qk::platform
