// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringStorage.h"

#include "QKFoundation/platform/values/WideElements.h"

#include <cstdlib>
#include <memory>
#include <new>

namespace qk {

namespace {

constexpr char16_t kNoUnits[1] = {};

void* allocateBytes(std::size_t bytes) {
    void* memory = std::malloc(bytes);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

std::size_t CFGetRetainCount(CFStringRef string) noexcept {
    return string->references.load(std::memory_order_relaxed);
}

namespace internal {

constinit const CFStringStorage kEmptyStorage(kImmortal, kNoUnits, 0);

std::wstring_view borrowedElements(CFStringRef string) noexcept {
    return string->units.load(std::memory_order_relaxed) == nullptr
               ? static_cast<const BorrowedStorage*>(string)->elements
               : std::wstring_view();
}

const char16_t* convertedUnits(CFStringRef string) {
    const auto& borrowing = *static_cast<const BorrowedStorage*>(string);
    auto* converted = static_cast<char16_t*>(allocateBytes(string->length * sizeof(char16_t)));
    validWideToUTF16(borrowing.elements, converted);
    const char16_t* current = nullptr;
    if (string->units.compare_exchange_strong(current, converted, std::memory_order_acq_rel,
                                              std::memory_order_acquire)) {
        return converted;
    }
    std::free(converted); // another thread was first
    return current;
}

void destroyStorage(CFStringRef string) noexcept {
    // Null units or units somewhere else mean that the storage borrows: no other kind that dies has its units outside.
    const char16_t* units = string->units.load(std::memory_order_relaxed);
    if (units != reinterpret_cast<const char16_t*>(string + 1)) {
        std::free(const_cast<char16_t*>(units));
        delete static_cast<const BorrowedStorage*>(string);
    } else {
        std::destroy_at(string);
        std::free(const_cast<CFStringStorage*>(string));
    }
}

void* StorageBuilder::allocate(std::size_t capacity) {
    if (capacity > kMaxUnits) {
        throw std::bad_alloc();
    }
    return allocateBytes(sizeof(CFStringStorage) + capacity * sizeof(char16_t));
}

void StorageBuilder::shrink(std::size_t length) noexcept {
    void* smaller = std::realloc(memory_, sizeof(CFStringStorage) + length * sizeof(char16_t));
    memory_ = smaller != nullptr ? smaller : memory_;
}

} // namespace internal
} // namespace qk
