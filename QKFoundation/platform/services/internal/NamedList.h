// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <atomic>
#include <utility>

namespace qk::internal {

/// Values by name, a few of them, to which others are only ever added: what was found stays where it is for the list's
/// life. Threads: finding any, at the same time, without a lock; adding one at a time.
template <typename T>
class NamedList {
public:
    NamedList() = default;
    NamedList(const NamedList&) = delete;
    NamedList& operator=(const NamedList&) = delete;
    ~NamedList() {
        const Node* node = last_.load(std::memory_order_acquire);
        while (node != nullptr) {
            delete std::exchange(node, node->before);
        }
    }

    /// The value of `name`; null when there is none.
    [[nodiscard]] const T* find(const NSString& name) const {
        for (const Node* node = last_.load(std::memory_order_acquire); node != nullptr; node = node->before) {
            if (node->name == name) {
                return &node->value;
            }
        }
        return nullptr;
    }

    /// Adds the value of a name that has none.
    const T& add(const NSString& name, T value) {
        const Node* const node = new Node{name, std::move(value), last_.load(std::memory_order_relaxed)};
        last_.store(node, std::memory_order_release);
        return node->value;
    }

private:
    struct Node {
        NSString name;
        T value;
        const Node* before;
    };

    std::atomic<const Node*> last_{nullptr};
};

} // namespace qk::internal
