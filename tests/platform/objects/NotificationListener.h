// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSNotificationCenter.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include <functional>
#include <memory>
#include <vector>

namespace qk {

/// Does what a test wants when it is notified.
class NotificationListener : public NSObject {
public:
    std::function<void(const std::shared_ptr<NSNotification>&)> onNotification;

    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<NotificationListener>("NotificationListener", NSObject::describedClass())
                .method("handle:", &NotificationListener::handle)
                .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

private:
    void handle(const std::shared_ptr<NSNotification>& notification) {
        if (const auto action = onNotification) { // a copy: the action may let go of this object
            action(notification);
        }
    }
};

} // namespace qk
