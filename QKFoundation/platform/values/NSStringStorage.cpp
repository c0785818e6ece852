// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringStorage.h"

#include "QKFoundation/platform/values/WideElements.h"

#include <cstdlib>
#include <limits>
#include <memory>
#include <new>

namespace qk {

using internal::kEmptyStorage;

namespace {

constexpr std::size_t kImmortal = std::numeric_limits<std::size_t>::max();

constexpr char16_t kNoUnits[1] = {};

const char16_t* inlineUnits(CFStringRef string) noexcept {
    return reinterpret_cast<const char16_t*>(string + 1);
}

/// Null `units` or units somewhere else mean that the storage borrows: no other kind has its units outside.
bool isBorrowed(CFStringRef string, const char16_t* units) noexcept {
    return units != inlineUnits(string) && string != &kEmptyStorage;
}

void* allocateBytes(std::size_t bytes) {
    void* memory = std::malloc(bytes);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void destroy(CFStringRef string) noexcept {
    const char16_t* units = string->units.load(std::memory_order_relaxed);
    if (isBorrowed(string, units)) {
        std::free(const_cast<char16_t*>(units));
        delete static_cast<const internal::BorrowedStorage*>(string);
    } else {
        std::destroy_at(string);
        std::free(const_cast<CFStringStorage*>(string));
    }
}

const char16_t* convertBorrowed(const internal::BorrowedStorage& string) {
    auto* converted = static_cast<char16_t*>(allocateBytes(string.length * sizeof(char16_t)));
    internal::validWideToUTF16(string.elements, converted);
    const char16_t* current = nullptr;
    if (string.units.compare_exchange_strong(current, converted, std::memory_order_acq_rel,
                                             std::memory_order_acquire)) {
        return converted;
    }
    std::free(converted); // another thread was first
    return current;
}

} // namespace

CFStringRef CFRetain(CFStringRef string) noexcept {
    if (string != &kEmptyStorage) {
        string->references.fetch_add(1, std::memory_order_relaxed);
    }
    return string;
}

void CFRelease(CFStringRef string) noexcept {
    if (string == &kEmptyStorage) {
        return;
    }
    // Whoever holds the only reference is alone: nobody else can be adding one, and the costly subtraction is not
    // needed.
    if (string->references.load(std::memory_order_acquire) == 1 ||
        string->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        destroy(string);
    }
}

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

std::u16string_view unitsOf(CFStringRef string) {
    const char16_t* units = string->units.load(std::memory_order_acquire);
    if (units == nullptr) {
        units = convertBorrowed(*static_cast<const BorrowedStorage*>(string));
    }
    return {units, string->length};
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
