// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <vector>

namespace qk::platform {

/// Where in a list something was found last: whoever goes through all of it asks for the same a few times, and then for
/// what is next to it. It is no more than a hint, so that it needs no lock. Threads: any, at the same time.
class LatestPlace {
public:
    /// What `isIt` holds for in `list`, when it is at that place or at the next one; null otherwise.
    template <typename T, typename Test>
    [[nodiscard]] const T* find(const std::vector<T>& list, Test isIt) {
        const std::size_t latest = place_.load(std::memory_order_relaxed);
        for (std::size_t place = latest; place < list.size() && place <= latest + 1; ++place) {
            if (isIt(list[place])) {
                return remember(list, &list[place]);
            }
        }
        return nullptr;
    }

    /// Remembers where `found` is in `list`, unless it is null, and returns it.
    template <typename T>
    const T* remember(const std::vector<T>& list, const T* found) {
        if (found != nullptr) {
            place_.store(static_cast<std::size_t>(found - list.data()), std::memory_order_relaxed);
        }
        return found;
    }

private:
    std::atomic<std::size_t> place_ = 0;
};

} // namespace qk::platform
