// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/services/MetadataIndex.h"

#include <cstddef>
#include <memory>
#include <unordered_set>
#include <vector>

namespace qk {

/// A set of metadata items that changes: each item once, in the order in which they were added. Threads: one at a time.
class QK_EXPORT MetadataItemSet final : public NSObject {
public:
    using Items = std::vector<std::shared_ptr<NSMetadataItem>>;

    /// `set`. An empty one.
    [[nodiscard]] static std::shared_ptr<MetadataItemSet> set();

    /// `addObject:`. Does nothing for null and for one that is in the set.
    void addObject(const std::shared_ptr<NSMetadataItem>& item);

    /// `removeAllObjects`.
    void removeAllObjects();

    /// `containsObject:`.
    [[nodiscard]] bool containsObject(const std::shared_ptr<NSMetadataItem>& item) const;

    /// `count`.
    [[nodiscard]] std::size_t count() const noexcept { return items_.size(); }
    [[nodiscard]] bool isEmpty() const noexcept { return items_.empty(); }

    /// `allObjects`. In the order in which they were added; valid until the set changes.
    [[nodiscard]] const Items& allObjects() const noexcept { return items_; }

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

private:
    MetadataItemSet() = default;

    Items items_;
    std::unordered_set<Value> members_; // the same items, to be found
};

} // namespace qk
