// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSData.h"

#include <cstdlib>
#include <cstring>
#include <functional>

namespace qk {

NSData::NSData(std::span<const std::byte> bytes) : length_(bytes.size()) {
    if (!bytes.empty()) {
        auto copy = std::make_shared_for_overwrite<std::byte[]>(bytes.size());
        std::memcpy(copy.get(), bytes.data(), bytes.size());
        bytes_ = std::shared_ptr<const std::byte>(copy, copy.get());
    }
}

NSData NSData::adoptingMalloc(void* bytes, std::size_t length) {
    NSData data;
    // The pointer frees `bytes` itself when there is no memory for its count. The type must not be `void`: the bytes
    // are read.
    data.bytes_ = std::shared_ptr<const std::byte>(static_cast<std::byte*>(bytes),
                                                   [](std::byte* adopted) { std::free(adopted); });
    data.length_ = length;
    return data;
}

std::string_view NSData::view() const noexcept {
    return {reinterpret_cast<const char*>(bytes_.get()), length_};
}

std::size_t NSData::hash() const noexcept {
    constexpr std::size_t kEnough = 128; // data of hundreds of megabytes must not be read for a hash
    return std::hash<std::string_view>()(view().substr(0, kEnough)) ^ length_;
}

} // namespace qk
