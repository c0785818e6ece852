// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string_view>

namespace qk::internal {

/// A storage of well-formed UTF-32 elements that stay the caller's.
struct BorrowedStorage : CFStringStorage {
    BorrowedStorage(std::wstring_view borrowed, std::size_t unitCount) noexcept
        : CFStringStorage(1, nullptr, unitCount), elements(borrowed) {}

    std::wstring_view elements;
};

/// The largest number of units that a storage can hold.
inline constexpr std::size_t kMaxUnits =
    (static_cast<std::size_t>(-1) / 4 - sizeof(CFStringStorage)) / sizeof(char16_t);

/// The elements that `string` borrows, while nobody has asked for its units; no elements otherwise.
[[nodiscard]] std::wstring_view borrowedElements(CFStringRef string) noexcept;

/// A storage under construction: raw memory into which units are written before their final number is known.
class StorageBuilder {
public:
    /// Room for `capacity` units. Throws `std::bad_alloc`.
    explicit StorageBuilder(std::size_t capacity) : memory_(allocate(capacity)), capacity_(capacity) {}
    StorageBuilder(const StorageBuilder&) = delete;
    StorageBuilder& operator=(const StorageBuilder&) = delete;
    ~StorageBuilder() {
        if (memory_ != nullptr) {
            std::free(memory_);
        }
    }

    [[nodiscard]] char16_t* units() noexcept {
        return reinterpret_cast<char16_t*>(static_cast<CFStringStorage*>(memory_) + 1);
    }

    /// The finished string of the first `length` units, with one reference, which is the caller's.
    [[nodiscard]] CFStringRef finish(std::size_t length) noexcept {
        if (length == 0) {
            return &kEmptyStorage;
        }
        if (capacity_ - length > kTolerableSurplus) {
            shrink(length);
        }
        auto* string = ::new (memory_) CFStringStorage(1, units(), length);
        memory_ = nullptr;
        return string;
    }

private:
    /// Giving back less than this is not worth the time.
    static constexpr std::size_t kTolerableSurplus = 32;

    [[nodiscard]] static void* allocate(std::size_t capacity);
    void shrink(std::size_t length) noexcept;

    void* memory_;
    std::size_t capacity_;
};

} // namespace qk::internal
