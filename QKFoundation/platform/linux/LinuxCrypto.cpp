// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxCrypto.h"

namespace qk::platform {

std::optional<CommonCrypto::SHA1Digest> LinuxCrypto::SHA1(std::span<const std::byte> /*bytes*/) const {
    return std::nullopt;
}

} // namespace qk::platform
