// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxCrypto.h"

#include <openssl/evp.h>

namespace qk::platform {
namespace {

// Looking an algorithm up takes longer than a short text's digest. Never given back: digests may be asked for until the
// process has ended.
const EVP_MD* sha1() {
    static const EVP_MD* const algorithm = ::EVP_MD_fetch(nullptr, "SHA1", nullptr);
    return algorithm;
}

} // namespace

std::optional<CommonCrypto::SHA1Digest> LinuxCrypto::SHA1(std::span<const std::byte> bytes) const {
    SHA1Digest digest;
    const bool isDone =
        sha1() != nullptr && ::EVP_Digest(bytes.data(), bytes.size(), reinterpret_cast<unsigned char*>(digest.data()),
                                          nullptr, sha1(), nullptr) == 1;
    return isDone ? std::optional(digest) : std::nullopt;
}

} // namespace qk::platform
