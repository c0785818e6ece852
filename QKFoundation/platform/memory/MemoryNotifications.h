// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/services/DistributedNotificationCenter.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace qk::platform::internal {
class NotificationObservers;
}

namespace qk::platform::memory {

/// What carries notifications from one machine in memory to the others, as if they were processes of one user.
/// Threads: any, at the same time.
class QK_EXPORT NotificationBus {
public:
    /// Has every machine that is connected told.
    void post(const NSString& name);

private:
    friend class MemoryDistributedNotifications;
    void connect(const std::shared_ptr<internal::NotificationObservers>& observers);

    std::mutex mutex_;
    std::vector<std::weak_ptr<internal::NotificationObservers>> connected_;
};

/// Notifications within this machine until it is connected to a bus. They arrive when the machine's main run loop is
/// drained. Threads: any, at the same time.
class QK_EXPORT MemoryDistributedNotifications final : public DistributedNotificationCenter {
public:
    explicit MemoryDistributedNotifications(std::shared_ptr<Dispatch> dispatch);

    /// From now on what is posted here goes to every machine on `bus`, and what they post comes here.
    void connectTo(const std::shared_ptr<NotificationBus>& bus);

    /// The suspension behaviours of the observers that were added so far, in order.
    [[nodiscard]] std::vector<NSNotificationSuspensionBehavior> suspensionBehaviors() const;

    [[nodiscard]] std::unique_ptr<NotificationRegistration>
    addObserver(const NSString& name, NSNotificationSuspensionBehavior suspensionBehavior,
                std::function<void()> handler) override;
    bool postNotificationName(const NSString& name) override;
    [[nodiscard]] bool isConnected() override;

private:
    std::shared_ptr<internal::NotificationObservers> observers_;
    mutable std::mutex mutex_;
    std::shared_ptr<NotificationBus> bus_;
    std::vector<NSNotificationSuspensionBehavior> suspensionBehaviors_;
};

} // namespace qk::platform::memory
