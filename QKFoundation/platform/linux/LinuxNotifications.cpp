// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxNotifications.h"

#include "QKFoundation/platform/linux/SessionBus.h"
#include "QKFoundation/platform/services/internal/NotificationObservers.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using Observers = internal::NotificationObservers;

std::optional<std::string> busAddress(const Variables& variables) {
    if (std::optional<std::string> address = filledVariable(variables, "DBUS_SESSION_BUS_ADDRESS")) {
        return address;
    }
    const std::optional<std::string> folder = filledVariable(variables, "XDG_RUNTIME_DIR");
    return folder.has_value() && folder->starts_with('/') ? std::optional("unix:path=" + *folder + "/bus")
                                                          : std::nullopt;
}

// The name as D-Bus carries it.
std::optional<std::string> carried(const NSString& name) {
    std::optional<std::string> text = name.utf8();
    return text.has_value() && text->find('\0') == std::string::npos ? text : std::nullopt;
}

class Registration final : public NotificationRegistration {
public:
    explicit Registration(std::shared_ptr<const Observers::Observer> observer) : observer_(std::move(observer)) {}

private:
    std::shared_ptr<const Observers::Observer> observer_;
};

class LinuxNotifications final : public DistributedNotificationCenter {
public:
    LinuxNotifications(std::shared_ptr<LinuxDispatch> dispatch, std::optional<std::string> address,
                       std::chrono::milliseconds limit)
        : dispatch_(std::move(dispatch)),
          address_(std::move(address)),
          limit_(limit),
          observers_(std::make_shared<Observers>(dispatch_)) {}

    [[nodiscard]] std::unique_ptr<NotificationRegistration>
    addObserver(const NSString& name, NSNotificationSuspensionBehavior /*suspensionBehavior*/,
                std::function<void()> handler) override {
        auto registration = std::make_unique<Registration>(observers_->add(name, std::move(handler)));
        if (const std::optional<std::string> text = carried(name)) {
            const std::scoped_lock lock(mutex_);
            ask(*text);
        }
        return registration;
    }

    bool postNotificationName(const NSString& name) override {
        const std::optional<std::string> text = carried(name);
        if (text.has_value() && send(*text)) {
            return true;
        }
        observers_->tell(name);
        return false;
    }

    bool isConnected() override {
        const std::scoped_lock lock(mutex_);
        return connected();
    }

private:
    // A name that was asked for once stays asked for: who does not wait for it any more is not told.
    void ask(const std::string& name) {
        const bool isNew = std::ranges::find(asked_, name) == asked_.end();
        const bool wasAlive = bus_ != nullptr && bus_->isAlive();
        if (isNew) {
            asked_.push_back(name);
        }
        if (!wasAlive) {
            reconnect(); // asks for all
        } else if (isNew) {
            settle(bus_->ask(name));
        }
    }

    bool send(const std::string& name) {
        const std::scoped_lock lock(mutex_);
        if (!connected()) {
            return false;
        }
        const SessionBus::Answer answer = bus_->send(name);
        settle(answer);
        // Lost in between, it did not reach the bus. Unanswered it may have: a second time would be one too many.
        return answer == SessionBus::Answer::Done ||
               (answer == SessionBus::Answer::Lost && bus_ != nullptr && bus_->send(name) == SessionBus::Answer::Done);
    }

    bool connected() {
        if (bus_ == nullptr || !bus_->isAlive()) {
            reconnect();
        }
        return bus_ != nullptr;
    }

    // Replaces a connection that is lost, and leaves one whose bus does not answer: what it answers later is not heard.
    void settle(SessionBus::Answer answer) {
        if (answer == SessionBus::Answer::Lost) {
            reconnect();
        } else if (answer == SessionBus::Answer::None) {
            bus_.reset();
        }
    }

    // A new connection, with all that is waited for; none when there is no bus.
    void reconnect() {
        bus_.reset();
        if (!address_.has_value()) {
            return;
        }
        const auto tell = [observers = observers_](const std::string& name) {
            if (const std::optional<NSString> text = NSString::fromUTF8(name)) {
                observers->tell(*text);
            }
        };
        bus_ = SessionBus::connect(*address_, dispatch_->mainLoop(), limit_, tell);
        for (const std::string& name : asked_) {
            if (bus_ == nullptr || bus_->ask(name) != SessionBus::Answer::Done) {
                bus_.reset();
                return;
            }
        }
    }

    const std::shared_ptr<LinuxDispatch> dispatch_;
    const std::optional<std::string> address_;
    const std::chrono::milliseconds limit_;
    const std::shared_ptr<Observers> observers_;

    std::mutex mutex_; // guards what follows
    std::shared_ptr<SessionBus> bus_;
    std::vector<std::string> asked_;
};

} // namespace

std::shared_ptr<DistributedNotificationCenter> makeLinuxNotifications(const std::shared_ptr<LinuxDispatch>& dispatch,
                                                                      const Variables& variables,
                                                                      std::chrono::milliseconds limit) {
    return std::make_shared<LinuxNotifications>(dispatch, busAddress(variables), limit);
}

} // namespace qk::platform
