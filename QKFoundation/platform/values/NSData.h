// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace qk {

/// Immutable bytes. Copying shares them. Threads: may be read, copied and destroyed anywhere at the same time.
class QK_EXPORT NSData {
public:
    /// No bytes. Allocates nothing.
    NSData() noexcept = default;

    /// A copy of `bytes`.
    explicit NSData(std::span<const std::byte> bytes);
    explicit NSData(std::string_view bytes) : NSData(std::as_bytes(std::span(bytes))) {}

    /// The first `length` bytes of `bytes`, which was obtained from `malloc` or `realloc`; taken over, not copied.
    [[nodiscard]] static NSData adoptingMalloc(void* bytes, std::size_t length);

    [[nodiscard]] std::size_t length() const noexcept { return length_; }
    [[nodiscard]] bool isEmpty() const noexcept { return length_ == 0; }

    /// Valid as long as this value or a copy of it lives.
    [[nodiscard]] std::span<const std::byte> bytes() const noexcept { return {bytes_.get(), length_}; }
    [[nodiscard]] std::string_view view() const noexcept;

    [[nodiscard]] std::size_t hash() const noexcept;
    [[nodiscard]] friend bool operator==(const NSData& left, const NSData& right) noexcept {
        return left.view() == right.view();
    }

private:
    std::shared_ptr<const std::byte> bytes_;
    std::size_t length_ = 0;
};

} // namespace qk
