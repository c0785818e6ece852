// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FSEvents.h"

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qk::platform::internal {

/// The events of one window: one entry for each path, its flags joined, in the order in which the paths were first
/// told. `Path` is the adapter's own form of a path and has a hash.
template <typename Path>
class JoinedEvents {
public:
    using Entry = std::pair<Path, FSEventStreamEventFlags>;

    void add(Path path, FSEventStreamEventFlags flags) {
        const auto [found, isNew] = places_.try_emplace(std::move(path), places_.size());
        if (isNew) {
            flags_.push_back(flags);
        } else {
            flags_[found->second] |= flags;
        }
    }

    [[nodiscard]] bool isEmpty() const noexcept { return places_.empty(); }
    [[nodiscard]] std::size_t count() const noexcept { return places_.size(); }

    /// All entries; none are left.
    [[nodiscard]] std::vector<Entry> take() {
        std::vector<Entry> entries(flags_.size());
        while (!places_.empty()) {
            auto node = places_.extract(places_.begin());
            entries[node.mapped()] = {std::move(node.key()), flags_[node.mapped()]};
        }
        flags_.clear();
        return entries;
    }

private:
    std::unordered_map<Path, std::size_t> places_;
    std::vector<FSEventStreamEventFlags> flags_;
};

} // namespace qk::platform::internal
