// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/runtime/QKWeakContainer.h"

#include <memory>

namespace qk {

/// `QKWeakDictionary`: objects by key, none of which it keeps alive. Nothing is ever removed: the entry of an object
/// that is gone stays until its key is set again. Threads: one at a time; the objects may be destroyed on other threads
/// at any moment.
class QK_EXPORT QKWeakDictionary : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. An empty dictionary.
    [[nodiscard]] static std::shared_ptr<QKWeakDictionary> init();

    /// `dictionary`. The containers by key.
    [[nodiscard]] const NSMutableDictionary& dictionary() const noexcept { return dictionary_; }

    /// `objectForKeyedSubscript:`. Null when there is no entry and when its object is gone.
    [[nodiscard]] std::shared_ptr<NSObject> objectForKeyedSubscript(const NSString& key) const;

    /// `setObject:forKeyedSubscript:`. Puts a new container with `object` under `key`; an empty one for null.
    void setObject(const std::shared_ptr<NSObject>& object, const NSString& forKeyedSubscript);

private:
    QKWeakDictionary() = default;

    NSMutableDictionary dictionary_;
};

} // namespace qk
