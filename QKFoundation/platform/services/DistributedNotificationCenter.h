// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace qk {

/// What happens to notifications while their receiver is suspended.
enum class NSNotificationSuspensionBehavior : std::uint64_t {
    Drop = 1,
    Coalesce = 2,
    Hold = 3,
    DeliverImmediately = 4,
};

} // namespace qk

namespace qk::platform {

/// Keeps an observer registered for as long as it lives.
class QK_EXPORT NotificationRegistration {
public:
    NotificationRegistration() = default;
    NotificationRegistration(const NotificationRegistration&) = delete;
    NotificationRegistration& operator=(const NotificationRegistration&) = delete;
    virtual ~NotificationRegistration();
};

/// `NSDistributedNotificationCenter`: names that processes of one user call out to each other.
/// Threads: any, at the same time.
class QK_EXPORT DistributedNotificationCenter {
public:
    DistributedNotificationCenter() = default;
    DistributedNotificationCenter(const DistributedNotificationCenter&) = delete;
    DistributedNotificationCenter& operator=(const DistributedNotificationCenter&) = delete;
    virtual ~DistributedNotificationCenter();

    /// `addObserver:selector:name:object:suspensionBehavior:` for notifications of any sender. Calls `handler` on the
    /// main run loop for each one of that name. Never null: without a way to other processes only what this process
    /// posts itself arrives.
    [[nodiscard]] virtual std::unique_ptr<NotificationRegistration>
    addObserver(const NSString& name, NSNotificationSuspensionBehavior suspensionBehavior,
                std::function<void()> handler) = 0;

    /// `postNotificationName:object:`. Tells every process of the user. False when only this one could be told.
    virtual bool postNotificationName(const NSString& name) = 0;

    /// Whether there is a way to the user's other processes now; looks for one when there was none.
    [[nodiscard]] virtual bool isConnected() = 0;
};

} // namespace qk::platform
