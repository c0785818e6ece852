// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <atomic>
#include <cstddef>
#include <utility>

/// What arrays and dictionaries are made of. It stands here so that looking at them costs no call; a host has no use
/// for it.
namespace qk {

class NSString;
class Value;

namespace internal {

/// Stands in front of the elements of a collection, in one block of memory with them.
struct CollectionStorage {
    std::atomic<std::size_t> references{1};
    std::size_t count = 0;
};

/// A counted reference to elements that do not change; null when there are none.
template <typename Element>
class Elements {
public:
    Elements() noexcept = default;
    /// Takes over the one reference that the caller holds.
    explicit Elements(CollectionStorage* storage) noexcept : storage_(storage) {}
    Elements(const Elements& other) noexcept : storage_(other.storage_) {
        if (storage_ != nullptr) {
            storage_->references.fetch_add(1, std::memory_order_relaxed);
        }
    }
    Elements(Elements&& other) noexcept : storage_(std::exchange(other.storage_, nullptr)) {}
    Elements& operator=(Elements other) noexcept {
        std::swap(storage_, other.storage_);
        return *this;
    }
    ~Elements() {
        // Whoever holds the only reference is alone, and needs no subtraction.
        if (storage_ != nullptr && (storage_->references.load(std::memory_order_acquire) == 1 ||
                                    storage_->references.fetch_sub(1, std::memory_order_acq_rel) == 1)) {
            destroy(storage_);
        }
    }

    [[nodiscard]] std::size_t count() const noexcept { return storage_ != nullptr ? storage_->count : 0; }
    [[nodiscard]] const Element* data() const noexcept {
        return storage_ != nullptr ? reinterpret_cast<const Element*>(storage_ + 1) : nullptr;
    }

private:
    /// Takes nested collections apart without a call per level.
    static void destroy(CollectionStorage* storage) noexcept;

    CollectionStorage* storage_ = nullptr;
};

template <>
QK_EXPORT void Elements<Value>::destroy(CollectionStorage* storage) noexcept;
template <>
QK_EXPORT void Elements<std::pair<NSString, Value>>::destroy(CollectionStorage* storage) noexcept;

} // namespace internal
} // namespace qk
