// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <vector>

namespace qk::platform {

/// The last marks of what the user did; what `ActivityTracing` keeps in the process. Threads: any, at the same time.
class BreadcrumbRing {
public:
    static constexpr std::size_t kCapacity = 128;

    /// Adds the newest mark; the oldest goes when there is no more room.
    void add(const NSString& text) {
        const std::scoped_lock lock(mutex_);
        if (texts_.size() == kCapacity) {
            texts_.pop_front();
        }
        texts_.push_back(text);
    }

    /// The oldest first.
    [[nodiscard]] std::vector<NSString> texts() const {
        const std::scoped_lock lock(mutex_);
        return {texts_.begin(), texts_.end()};
    }

private:
    mutable std::mutex mutex_;
    std::deque<NSString> texts_;
};

} // namespace qk::platform
