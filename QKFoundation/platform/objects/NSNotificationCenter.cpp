// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSNotificationCenter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <iterator>
#include <mutex>
#include <utility>
#include <vector>

namespace qk {

std::shared_ptr<NSNotification> NSNotification::initWithName(const NSString& name,
                                                             const std::shared_ptr<NSObject>& object,
                                                             const std::optional<NSDictionary>& userInfo) {
    return std::shared_ptr<NSNotification>(new NSNotification(name, object, userInfo));
}

NSNotification::NSNotification(NSString name, std::shared_ptr<NSObject> object, std::optional<NSDictionary> userInfo)
    : name_(std::move(name)), object_(std::move(object)), userInfo_(std::move(userInfo)) {}

const ClassDescription& NSNotification::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSNotification>("NSNotification", NSObject::describedClass())
            .property("name", &NSNotification::name)
            .property("object", &NSNotification::object)
            .property("userInfo", &NSNotification::userInfo)
            .build();
    return description;
}

const ClassDescription& NSNotification::classDescription() const {
    return describedClass();
}

namespace {

/// Somebody else's object, not retained. One that lived in a shared pointer is known to have died, so that another at
/// its address is not taken for it.
template <typename Object>
class Unretained {
public:
    explicit Unretained(Object* object) : object_(object), life_(lifeOf(object)), isShared_(life_.use_count() > 0) {}

    [[nodiscard]] Object* get() const noexcept { return object_; }
    [[nodiscard]] bool hasDied() const noexcept { return isShared_ && life_.expired(); }

    /// Keeps the object alive for as long as it is held; null for one that is in no shared pointer, and when it has
    /// died.
    [[nodiscard]] std::shared_ptr<const NSObject> retained() const { return life_.lock(); }

private:
    static std::weak_ptr<const NSObject> lifeOf(const NSObject* object) {
        return object != nullptr ? object->weak_from_this() : std::weak_ptr<const NSObject>();
    }

    Object* object_;
    std::weak_ptr<const NSObject> life_;
    bool isShared_;
};

struct Registration {
    Registration(NSObject& theObserver, NSString theSelector, std::optional<NSString> theName,
                 const NSObject* theObject)
        : observer(&theObserver), selector(std::move(theSelector)), name(std::move(theName)), object(theObject) {}

    [[nodiscard]] bool isOrphaned() const noexcept { return observer.hasDied() || object.hasDied(); }

    [[nodiscard]] bool wants(const NSNotification& notification) const {
        return (!name.has_value() || *name == notification.name()) &&
               (object.get() == nullptr || object.get() == notification.object().get()) && !isOrphaned();
    }

    [[nodiscard]] bool wasMadeFor(const NSObject& theObserver, const std::optional<NSString>& theName,
                                  const NSObject* theObject) const {
        return observer.get() == &theObserver && (!theName.has_value() || name == theName) &&
               (theObject == nullptr || object.get() == theObject);
    }

    Unretained<NSObject> observer;
    NSString selector;
    std::optional<NSString> name;
    Unretained<const NSObject> object;
    std::atomic<bool> isRemoved = false; // seen by posts that have begun
};

void tell(const Registration& registration, const std::shared_ptr<NSNotification>& notification) {
    const auto alive = registration.observer.retained();
    if (registration.isRemoved.load(std::memory_order_acquire) || registration.observer.hasDied()) {
        return;
    }
    const std::optional<Value> argument(notification);
    registration.observer.get()->performSelector(registration.selector, {&argument, 1});
}

} // namespace

struct NSNotificationCenter::Registrations {
    using List = std::vector<std::shared_ptr<Registration>>;

    void add(std::shared_ptr<Registration> registration) {
        const std::scoped_lock lock(mutex);
        if (list.size() >= sizeToTidyAt) {
            // Those who died without taking themselves away; at doubled sizes, so that adding stays cheap.
            std::erase_if(list, [](const std::shared_ptr<Registration>& one) { return one->isOrphaned(); });
            sizeToTidyAt = std::max(kSmallestSizeToTidyAt, 2 * list.size());
        }
        list.push_back(std::move(registration));
    }

    void remove(const NSObject& observer, const std::optional<NSString>& name, const NSObject* object) {
        const std::scoped_lock lock(mutex);
        std::erase_if(list, [&](const std::shared_ptr<Registration>& one) {
            const bool isRemoved = one->wasMadeFor(observer, name, object);
            if (isRemoved) {
                one->isRemoved.store(true, std::memory_order_release);
            }
            return isRemoved;
        });
    }

    [[nodiscard]] List wanting(const NSNotification& notification) const {
        List result;
        const std::scoped_lock lock(mutex);
        std::ranges::copy_if(list, std::back_inserter(result),
                             [&](const std::shared_ptr<Registration>& one) { return one->wants(notification); });
        return result;
    }

    static constexpr std::size_t kSmallestSizeToTidyAt = 32;

    mutable std::mutex mutex;
    List list; // in the order in which they were made
    std::size_t sizeToTidyAt = kSmallestSizeToTidyAt;
};

NSNotificationCenter::NSNotificationCenter() : registrations_(std::make_unique<Registrations>()) {}

NSNotificationCenter::~NSNotificationCenter() = default;

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter& center = *new NSNotificationCenter;
    return center;
}

void NSNotificationCenter::addObserver(NSObject& observer, const NSString& selector,
                                       const std::optional<NSString>& name, const NSObject* object) {
    registrations_->add(std::make_shared<Registration>(observer, selector, name, object));
}

void NSNotificationCenter::removeObserver(const NSObject& observer, const std::optional<NSString>& name,
                                          const NSObject* object) {
    registrations_->remove(observer, name, object);
}

void NSNotificationCenter::removeObserver(const NSObject& observer) {
    registrations_->remove(observer, std::nullopt, nullptr);
}

void NSNotificationCenter::postNotificationName(const NSString& name, const std::shared_ptr<NSObject>& object,
                                                const std::optional<NSDictionary>& userInfo) {
    const auto notification = NSNotification::initWithName(name, object, userInfo);
    for (const std::shared_ptr<Registration>& registration : registrations_->wanting(*notification)) {
        tell(*registration, notification);
    }
}

} // namespace qk
