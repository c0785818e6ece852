// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Collections.h"

#include <algorithm>
#include <cstdint>

namespace qk::internal {

namespace {

/// How deep in each other the collections are that this thread is destroying, and those that are too deep and wait for
/// their turn. Plain data: collections may still die while the thread's other variables are being destroyed.
struct Destruction {
    unsigned depth = 0;
    CollectionStorage* values = nullptr;
    CollectionStorage* entries = nullptr;
};
thread_local constinit Destruction destruction;

constexpr unsigned kDeepest = 32;

/// The count of those that wait is over, so its place holds the one that waits behind.
void push(CollectionStorage*& list, CollectionStorage* storage) noexcept {
    static_assert(sizeof(std::uintptr_t) <= sizeof(std::size_t));
    storage->references.store(reinterpret_cast<std::uintptr_t>(list), std::memory_order_relaxed);
    list = storage;
}

CollectionStorage* pop(CollectionStorage*& list) noexcept {
    CollectionStorage* const storage = list;
    list = reinterpret_cast<CollectionStorage*>(storage->references.load(std::memory_order_relaxed));
    return storage;
}

template <typename Element>
void destroyElements(CollectionStorage* storage) noexcept {
    std::destroy_n(reinterpret_cast<Element*>(storage + 1), storage->count);
    ::operator delete(storage);
}

/// Destroys `storage` here, or leaves it to the outermost call when this one is deep below it.
template <typename Element>
void destroyStorage(CollectionStorage* storage, CollectionStorage*& list) noexcept {
    if (destruction.depth == kDeepest) {
        push(list, storage);
        return;
    }
    ++destruction.depth;
    destroyElements<Element>(storage);
    while (destruction.depth == 1 && (destruction.values != nullptr || destruction.entries != nullptr)) {
        if (destruction.values != nullptr) {
            destroyElements<Value>(pop(destruction.values));
        } else {
            destroyElements<NSDictionary::Entry>(pop(destruction.entries));
        }
    }
    --destruction.depth;
}

/// Pairs of values that are still to be compared.
class Comparison {
public:
    bool run(const Value& left, const Value& right) {
        if (!compare(left, right)) {
            return false;
        }
        while (!pairs_.empty()) {
            const auto [first, second] = pairs_.back();
            pairs_.pop_back();
            if (!compare(*first, *second)) {
                return false;
            }
        }
        return true;
    }

private:
    /// Whether the two are equal as far as can be seen here; what they hold is added to the pairs.
    bool compare(const Value& left, const Value& right) {
        return left.visit([&]<typename T>(const T& held) {
            if constexpr (std::same_as<T, Value::Object>) {
                return held->isEqual(right);
            } else {
                const T* other = right.as<T>();
                return other != nullptr && compareHeld(held, *other);
            }
        });
    }

    template <typename T>
    bool compareHeld(const T& left, const T& right) {
        return left == right;
    }
    bool compareHeld(const NSArray& left, const NSArray& right) {
        if (left.count() != right.count()) {
            return false;
        }
        for (std::size_t index = left.count(); left.begin() != right.begin() && index > 0; --index) {
            pairs_.emplace_back(&left[index - 1], &right[index - 1]);
        }
        return true;
    }
    bool compareHeld(const NSDictionary& left, const NSDictionary& right) {
        if (left.count() != right.count()) {
            return false;
        }
        if (left.begin() == right.begin()) {
            return true;
        }
        const auto sameKey = [](const auto& first, const auto& second) { return first.first == second.first; };
        if (!std::equal(left.begin(), left.end(), right.begin(), sameKey)) {
            return false;
        }
        for (std::size_t index = left.count(); index > 0; --index) {
            pairs_.emplace_back(&left.entries()[index - 1].second, &right.entries()[index - 1].second);
        }
        return true;
    }

    std::vector<std::pair<const Value*, const Value*>> pairs_;
};

} // namespace

template <>
void Elements<Value>::destroy(CollectionStorage* storage) noexcept {
    destroyStorage<Value>(storage, destruction.values);
}

template <>
void Elements<NSDictionary::Entry>::destroy(CollectionStorage* storage) noexcept {
    destroyStorage<NSDictionary::Entry>(storage, destruction.entries);
}

bool areEqual(const Value& left, const Value& right) {
    return Comparison().run(left, right);
}

} // namespace qk::internal
