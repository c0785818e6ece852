// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>

namespace qk {

/// `QKWeakContainer`: a box for an object that it does not keep alive. Threads: one at a time; the object may be
/// destroyed on another thread at any moment.
class QK_EXPORT QKWeakContainer : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. An empty container.
    [[nodiscard]] static std::shared_ptr<QKWeakContainer> init();

    /// `content`. Null when there is none, and once the object is gone.
    [[nodiscard]] std::shared_ptr<NSObject> content() const { return content_.lock(); }
    void setContent(const std::shared_ptr<NSObject>& content) { content_ = content; }

private:
    QKWeakContainer() = default;

    std::weak_ptr<NSObject> content_;
};

} // namespace qk
