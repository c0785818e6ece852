// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSKeyValueObserving.h"

#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qk {
namespace internal {
namespace {

struct Registration {
    Registration(NSObject& observerOfKey, NSString observedKey, NSKeyValueObservingOptions wanted, void* handedBack)
        : observer(&observerOfKey),
          life(observerOfKey.weak_from_this()),
          isShared(!life.expired()),
          key(std::move(observedKey)),
          options(wanted),
          context(handedBack) {}

    // Whether its observer was in a shared pointer and has died, or is about to.
    [[nodiscard]] bool isOrphaned() const noexcept { return isShared && life.expired(); }
    [[nodiscard]] bool isActive() const noexcept { return !isRemoved && !isOrphaned(); }

    NSObject* observer; // takes itself away before it dies, or is known to have died by `life`
    std::weak_ptr<NSObject> life;
    bool isShared;
    NSString key;
    NSKeyValueObservingOptions options;
    void* context;
    bool isRemoved = false;
};

// Shared by the list of the object and by the changes that are being reported: who is taken away meanwhile stays here,
// marked, until they are over.
using Registrations = std::vector<std::shared_ptr<Registration>>;

struct PendingChange {
    NSString key;
    Registrations observers; // those of the moment before the change
    std::optional<Value> oldValue;
};

Value markedIfNil(const std::optional<Value>& value) {
    return value.value_or(NSNull{});
}

bool anyWants(const Registrations& observers, NSKeyValueObservingOptions option) {
    return std::ranges::any_of(observers, [&](const std::shared_ptr<Registration>& observer) {
        return observer->isActive() && hasOption(observer->options, option);
    });
}

// What one notification tells; which of the values an observer sees is a matter of its options.
struct Notification {
    std::optional<Value> oldValue;
    std::optional<Value> newValue;
    bool tellsOld = false;
    bool tellsNew = false;
    bool isPrior = false;
};

// The keys as strings, made once.
struct ChangeKeys {
    NSString kind = NSKeyValueChangeKindKey;
    NSString newValue = NSKeyValueChangeNewKey;
    NSString notificationIsPrior = NSKeyValueChangeNotificationIsPriorKey;
    NSString oldValue = NSKeyValueChangeOldKey;
};

NSDictionary changeFor(const Registration& registration, const Notification& notification) {
    static const ChangeKeys& keys = *new ChangeKeys;
    std::vector<NSDictionary::Entry> entries;
    entries.reserve(3);
    entries.emplace_back(keys.kind, static_cast<std::uint64_t>(NSKeyValueChange::Setting));
    if (notification.tellsOld && hasOption(registration.options, NSKeyValueObservingOptions::Old)) {
        entries.emplace_back(keys.oldValue, markedIfNil(notification.oldValue));
    }
    if (notification.tellsNew && hasOption(registration.options, NSKeyValueObservingOptions::New)) {
        entries.emplace_back(keys.newValue, markedIfNil(notification.newValue));
    }
    if (notification.isPrior) {
        entries.emplace_back(keys.notificationIsPrior, true);
    }
    return NSDictionary(std::move(entries));
}

void notify(NSObject& object, const Registration& registration, const Notification& notification) {
    const auto alive = registration.life.lock(); // an observer that lets go of itself lives until it has returned
    if (registration.isActive()) {
        registration.observer->observeValueForKeyPath(registration.key, object, changeFor(registration, notification),
                                                      registration.context);
    }
}

} // namespace

/// Who observes an object, and the changes of it that have begun.
class Observations {
public:
    [[nodiscard]] static Observations& of(NSObject& object) {
        if (object.observations_ == nullptr) {
            object.observations_.reset(new Observations);
        }
        return *object.observations_;
    }

    // Gives the object back what it needs only while somebody observes it.
    static void discardIfUnused(NSObject& object) {
        if (object.observations_ != nullptr && object.observations_->registrations_.empty() &&
            object.observations_->pending_.empty()) {
            object.observations_.reset();
        }
    }

    void add(std::shared_ptr<Registration> registration) {
        // One that died without being taken away must not be mistaken for a new observer at the same address.
        std::erase_if(registrations_, [&](const std::shared_ptr<Registration>& other) {
            return other->observer == registration->observer && other->isOrphaned();
        });
        registrations_.push_back(std::move(registration));
    }

    template <typename Matches>
    [[nodiscard]] bool removeLatest(Matches matches) {
        const auto found = std::find_if(registrations_.rbegin(), registrations_.rend(),
                                        [&](const std::shared_ptr<Registration>& one) { return matches(*one); });
        if (found == registrations_.rend()) {
            return false;
        }
        (*found)->isRemoved = true;
        registrations_.erase(std::next(found).base());
        return true;
    }

    [[nodiscard]] Registrations observersOf(const NSString& key) const {
        Registrations observers;
        std::ranges::copy_if(registrations_, std::back_inserter(observers),
                             [&](const std::shared_ptr<Registration>& one) { return one->key == key; });
        return observers;
    }

    void begin(PendingChange change) { pending_.push_back(std::move(change)); }

    [[nodiscard]] std::optional<PendingChange> end(const NSString& key) {
        const auto found = std::find_if(pending_.rbegin(), pending_.rend(),
                                        [&](const PendingChange& change) { return change.key == key; });
        if (found == pending_.rend()) {
            return std::nullopt;
        }
        PendingChange change = std::move(*found);
        pending_.erase(std::next(found).base());
        return change;
    }

private:
    Registrations registrations_;
    std::vector<PendingChange> pending_; // the latest last
};

void DeleteObservations::operator()(Observations* observations) const noexcept {
    delete observations;
}

} // namespace internal

using internal::Observations;

void NSObject::addObserver(NSObject& observer, const NSString& forKeyPath, NSKeyValueObservingOptions options,
                           void* context) {
    const auto alive = weak_from_this().lock();
    const auto registration = std::make_shared<internal::Registration>(observer, forKeyPath, options, context);
    if (hasOption(options, NSKeyValueObservingOptions::Initial)) {
        internal::Notification initial;
        if (hasOption(options, NSKeyValueObservingOptions::New)) {
            initial.newValue = valueForKey(forKeyPath);
            initial.tellsNew = true;
        }
        Observations::of(*this).add(registration);
        internal::notify(*this, *registration, initial);
    } else {
        Observations::of(*this).add(registration);
    }
}

void NSObject::removeObserver(NSObject& observer, const NSString& forKeyPath) {
    const auto matches = [&](const internal::Registration& registration) {
        return registration.observer == &observer && registration.key == forKeyPath;
    };
    if (observations_ == nullptr || !observations_->removeLatest(matches)) {
        throw NSRangeException("no such observer of the key " + forKeyPath + " of " + NSObject::description());
    }
    Observations::discardIfUnused(*this);
}

void NSObject::removeObserver(NSObject& observer, const NSString& forKeyPath, void* context) {
    const auto matches = [&](const internal::Registration& registration) {
        return registration.observer == &observer && registration.key == forKeyPath && registration.context == context;
    };
    if (observations_ == nullptr || !observations_->removeLatest(matches)) {
        throw NSRangeException("no such observer of the key " + forKeyPath + " of " + NSObject::description() +
                               " with that context");
    }
    Observations::discardIfUnused(*this);
}

void NSObject::observeValueForKeyPath(const NSString& keyPath, NSObject& ofObject, const NSDictionary& /*change*/,
                                      void* /*context*/) {
    throw NSException("NSInternalInconsistencyException", NSObject::description() + " does not deal with a change of " +
                                                              keyPath + " of " + ofObject.NSObject::description());
}

void NSObject::willChangeValueForKey(const NSString& key) {
    if (observations_ == nullptr) {
        return;
    }
    const auto alive = weak_from_this().lock();
    internal::PendingChange change{key, observations_->observersOf(key), std::nullopt};
    internal::Notification prior;
    prior.isPrior = true;
    prior.tellsOld = anyWants(change.observers, NSKeyValueObservingOptions::Old);
    if (prior.tellsOld) {
        change.oldValue = valueForKey(key);
        prior.oldValue = change.oldValue;
    }
    for (const auto& registration : change.observers) {
        if (hasOption(registration->options, NSKeyValueObservingOptions::Prior)) {
            notify(*this, *registration, prior);
        }
    }
    if (observations_ != nullptr) { // else the last observer went away meanwhile
        observations_->begin(std::move(change));
    }
}

void NSObject::didChangeValueForKey(const NSString& key) {
    if (observations_ == nullptr) {
        return;
    }
    const auto alive = weak_from_this().lock();
    auto change = observations_->end(key);
    Observations::discardIfUnused(*this);
    if (!change.has_value()) {
        return;
    }
    internal::Notification notification;
    notification.tellsOld = true;
    notification.oldValue = std::move(change->oldValue);
    notification.tellsNew = anyWants(change->observers, NSKeyValueObservingOptions::New);
    if (notification.tellsNew) {
        notification.newValue = valueForKey(key);
    }
    for (const auto& registration : change->observers) {
        notify(*this, *registration, notification);
    }
}

void NSObject::changeObservedValue(const NSString& key, const std::function<void()>& store) {
    const auto alive = weak_from_this().lock();
    willChangeValueForKey(key);
    try {
        store();
    } catch (...) {
        if (observations_ != nullptr) {
            static_cast<void>(observations_->end(key));
            Observations::discardIfUnused(*this);
        }
        throw;
    }
    didChangeValueForKey(key);
}

} // namespace qk
