// SPDX-License-Identifier: Apache-2.0
// For builds without libsystemd: notifications stay in this process.
#include "QKFoundation/platform/linux/LinuxNotifications.h"
#include "QKFoundation/platform/services/internal/NotificationObservers.h"

#include <utility>

namespace qk::platform {
namespace {

class Registration final : public NotificationRegistration {
public:
    explicit Registration(std::shared_ptr<const internal::NotificationObservers::Observer> observer)
        : observer_(std::move(observer)) {}

private:
    std::shared_ptr<const internal::NotificationObservers::Observer> observer_;
};

class LocalNotifications final : public DistributedNotificationCenter {
public:
    explicit LocalNotifications(std::shared_ptr<Dispatch> dispatch) : observers_(std::move(dispatch)) {}

    [[nodiscard]] std::unique_ptr<NotificationRegistration>
    addObserver(const NSString& name, NSNotificationSuspensionBehavior /*suspensionBehavior*/,
                std::function<void()> handler) override {
        return std::make_unique<Registration>(observers_.add(name, std::move(handler)));
    }

    bool postNotificationName(const NSString& name) override {
        observers_.tell(name);
        return false;
    }

    bool isConnected() override { return false; }

private:
    internal::NotificationObservers observers_;
};

} // namespace

std::shared_ptr<DistributedNotificationCenter> makeLinuxNotifications(const std::shared_ptr<LinuxDispatch>& dispatch,
                                                                      const Variables& /*variables*/,
                                                                      std::chrono::milliseconds /*limit*/) {
    return std::make_shared<LocalNotifications>(dispatch);
}

} // namespace qk::platform
