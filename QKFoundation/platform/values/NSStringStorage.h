// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string_view>

namespace qk {

/// What is behind every string. One block of memory: this header with the units right behind it.
///
/// A string that borrows a caller's UTF-32 buffer is a `BorrowedStorage` instead, whose `units` are null until somebody
/// asks for them; they are then converted once, into a block of their own.
struct CFStringStorage {
    constexpr CFStringStorage(std::size_t count, const char16_t* content, std::size_t contentLength) noexcept
        : references(count), units(content), length(contentLength) {}

    mutable std::atomic<std::size_t> references;
    mutable std::atomic<std::size_t> hash{0}; // 0 until it is first asked for
    mutable std::atomic<const char16_t*> units;
    std::size_t length;
};

namespace internal {

/// A storage of well-formed UTF-32 elements that stay the caller's.
struct BorrowedStorage : CFStringStorage {
    BorrowedStorage(std::wstring_view borrowed, std::size_t unitCount) noexcept
        : CFStringStorage(1, nullptr, unitCount), elements(borrowed) {}

    std::wstring_view elements;
};

/// The largest number of units that a storage can hold.
inline constexpr std::size_t kMaxUnits =
    (static_cast<std::size_t>(-1) / 4 - sizeof(CFStringStorage)) / sizeof(char16_t);

/// The one storage of the empty string. It is there before any constructor runs and after all destructors have run.
extern const CFStringStorage kEmptyStorage;

/// The elements that `string` borrows, while nobody has asked for its units; no elements otherwise.
[[nodiscard]] std::wstring_view borrowedElements(CFStringRef string) noexcept;

/// All units of `string`, converted now if they were only borrowed so far.
[[nodiscard]] std::u16string_view unitsOf(CFStringRef string);

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

} // namespace internal
} // namespace qk
