// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/services/DistributedNotificationCenter.h"

#include <functional>
#include <memory>
#include <optional>

namespace qk {

/// `QKDistributedNotificationHandler`: calls back on the main thread, which runs its run loop, when any process of the
/// user posts a notification of one name.
///
/// On Linux notifications travel over the session bus. Without one, only what this process posts itself arrives.
/// Threads: made and destroyed on any; destroyed on the main thread, nothing is called afterwards.
class QK_EXPORT QKDistributedNotificationHandler : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithNotificationName:callback:suspensionBehavior:`. Never null. The callback may be empty.
    [[nodiscard]] static std::shared_ptr<QKDistributedNotificationHandler>
    initWithNotificationName(const NSString& name, std::function<void()> callback,
                             NSNotificationSuspensionBehavior suspensionBehavior);

    /// Ends the registration.
    ~QKDistributedNotificationHandler() override;

    /// `name`. The notification that is waited for.
    [[nodiscard]] const NSString& name() const noexcept { return name_; }

    /// `callback`. What is called; it may be replaced, on the main thread.
    [[nodiscard]] const std::function<void()>& callback() const noexcept { return callback_; }
    void setCallback(std::function<void()> callback) { callback_ = std::move(callback); }

    /// `handleNotification:`. Calls the callback if there is one; the notification itself is not handed on.
    void handleNotification(const std::optional<Value>& notification);

private:
    QKDistributedNotificationHandler(NSString name, std::function<void()> callback);

    NSString name_;
    std::function<void()> callback_;
    std::unique_ptr<platform::NotificationRegistration> registration_;
};

} // namespace qk
