// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryNotifications.h"

#include "QKFoundation/platform/services/internal/NotificationObservers.h"

#include <utility>

namespace qk::platform::memory {
namespace {

class Registration final : public NotificationRegistration {
public:
    explicit Registration(std::shared_ptr<const internal::NotificationObservers::Observer> observer)
        : observer_(std::move(observer)) {}

private:
    std::shared_ptr<const internal::NotificationObservers::Observer> observer_;
};

} // namespace

void NotificationBus::connect(const std::shared_ptr<internal::NotificationObservers>& observers) {
    const std::scoped_lock lock(mutex_);
    connected_.push_back(observers);
}

void NotificationBus::post(const NSString& name) {
    std::vector<std::weak_ptr<internal::NotificationObservers>> connected;
    {
        const std::scoped_lock lock(mutex_);
        connected = connected_;
    }
    for (const auto& each : connected) {
        if (const auto observers = each.lock()) {
            observers->tell(name);
        }
    }
}

MemoryDistributedNotifications::MemoryDistributedNotifications(std::shared_ptr<Dispatch> dispatch)
    : observers_(std::make_shared<internal::NotificationObservers>(std::move(dispatch))) {}

void MemoryDistributedNotifications::connectTo(const std::shared_ptr<NotificationBus>& bus) {
    bus->connect(observers_);
    const std::scoped_lock lock(mutex_);
    bus_ = bus;
}

std::vector<NSNotificationSuspensionBehavior> MemoryDistributedNotifications::suspensionBehaviors() const {
    const std::scoped_lock lock(mutex_);
    return suspensionBehaviors_;
}

std::unique_ptr<NotificationRegistration>
MemoryDistributedNotifications::addObserver(const NSString& name, NSNotificationSuspensionBehavior suspensionBehavior,
                                            std::function<void()> handler) {
    {
        const std::scoped_lock lock(mutex_);
        suspensionBehaviors_.push_back(suspensionBehavior);
    }
    return std::make_unique<Registration>(observers_->add(name, std::move(handler)));
}

bool MemoryDistributedNotifications::postNotificationName(const NSString& name) {
    std::shared_ptr<NotificationBus> bus;
    {
        const std::scoped_lock lock(mutex_);
        bus = bus_;
    }
    if (bus == nullptr) {
        observers_->tell(name);
        return false;
    }
    bus->post(name);
    return true;
}

bool MemoryDistributedNotifications::isConnected() {
    const std::scoped_lock lock(mutex_);
    return bus_ != nullptr;
}

} // namespace qk::platform::memory
