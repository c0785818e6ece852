// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <cassert>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>
#include <vector>

/// What arrays and dictionaries share. Both nest without limit (a file from outside may hold a hundred thousand
/// levels), so nothing that walks them may call itself once a level.
namespace qk::internal {

/// A collection under construction: the elements are made where they will stay. Threads: one at a time.
template <typename Element>
class CollectionBuilder {
public:
    /// Room for `capacity` elements, and not for more. Throws `std::bad_alloc`.
    explicit CollectionBuilder(std::size_t capacity)
        : storage_(capacity > 0 ? allocate(capacity) : nullptr), capacity_(capacity) {}

    /// Of elements that are moved here.
    explicit CollectionBuilder(std::vector<Element> elements) : CollectionBuilder(elements.size()) {
        for (Element& element : elements) {
            add(std::move(element));
        }
    }
    CollectionBuilder(std::initializer_list<Element> elements) : CollectionBuilder(elements.size()) {
        for (const Element& element : elements) {
            add(element);
        }
    }
    CollectionBuilder(const CollectionBuilder&) = delete;
    CollectionBuilder& operator=(const CollectionBuilder&) = delete;
    ~CollectionBuilder() { Elements<Element>{storage_}; }

    /// There is room for it.
    template <typename... Arguments>
    void add(Arguments&&... arguments) {
        assert(count() < capacity_);
        std::construct_at(end(), std::forward<Arguments>(arguments)...);
        ++storage_->count;
    }

    [[nodiscard]] std::size_t count() const noexcept { return storage_ != nullptr ? storage_->count : 0; }
    [[nodiscard]] Element* begin() noexcept {
        return storage_ != nullptr ? reinterpret_cast<Element*>(storage_ + 1) : nullptr;
    }
    [[nodiscard]] Element* end() noexcept { return begin() + count(); }

    /// Takes all but the first `count` elements away.
    void truncate(std::size_t count) noexcept {
        std::destroy(begin() + count, end());
        storage_->count = count;
    }

    /// What has been added, or what is left of it. If that is something, the builder has no room any more.
    [[nodiscard]] Elements<Element> finish() noexcept {
        if (count() == 0) {
            return {};
        }
        capacity_ = 0;
        return Elements<Element>(std::exchange(storage_, nullptr));
    }

private:
    [[nodiscard]] static CollectionStorage* allocate(std::size_t capacity) {
        static_assert(alignof(Element) <= alignof(CollectionStorage) &&
                      sizeof(CollectionStorage) % alignof(Element) == 0);
        if (capacity > (static_cast<std::size_t>(-1) / 2 - sizeof(CollectionStorage)) / sizeof(Element)) {
            throw std::bad_alloc();
        }
        return ::new (::operator new(sizeof(CollectionStorage) + capacity * sizeof(Element))) CollectionStorage;
    }

    CollectionStorage* storage_; // null without room
    std::size_t capacity_;
};

/// Whether the two are equal, collections included at any depth.
[[nodiscard]] bool areEqual(const Value& left, const Value& right);

} // namespace qk::internal
