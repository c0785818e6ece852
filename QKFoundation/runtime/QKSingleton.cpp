// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKSingleton.h"

#include <map>
#include <mutex>
#include <utility>

namespace qk {
namespace {

// `sharedInstances`, by class name, and the monitor of each class. `initialize` is its first use. The lock is held for
// a look-up or a store, never while an instance is made or let go of.
class SharedInstances {
public:
    // Never destroyed: singletons may be asked for while the process ends.
    static SharedInstances& ofAllClasses() {
        static SharedInstances* const instances = new SharedInstances;
        return *instances;
    }

    [[nodiscard]] std::shared_ptr<QKSingleton> find(const NSString& name) {
        const std::scoped_lock lock(mutex_);
        const auto found = instances_.find(name);
        return found != instances_.end() ? found->second : nullptr;
    }

    void store(const NSString& name, std::shared_ptr<QKSingleton> instance) {
        const std::scoped_lock lock(mutex_);
        std::swap(instances_[name], instance);
    }

    void removeAll() {
        std::map<NSString, std::shared_ptr<QKSingleton>> dropped;
        const std::scoped_lock lock(mutex_);
        dropped.swap(instances_);
    }

    [[nodiscard]] std::recursive_mutex& monitorOf(const NSString& name) {
        const std::scoped_lock lock(mutex_);
        return monitors_[name];
    }

private:
    std::mutex mutex_;
    std::map<NSString, std::shared_ptr<QKSingleton>> instances_;
    std::map<NSString, std::recursive_mutex> monitors_;
};

} // namespace

const ClassDescription& QKSingleton::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKSingleton>("QKSingleton", NSObject::describedClass()).build();
    return description;
}

const ClassDescription& QKSingleton::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKSingleton> QKSingleton::sharedInstance(const ClassDescription& description,
                                                         const std::function<std::shared_ptr<QKSingleton>()>& make) {
    SharedInstances& instances = SharedInstances::ofAllClasses();
    const NSString& name = description.name();
    if (std::shared_ptr<QKSingleton> existing = instances.find(name)) {
        return existing;
    }
    const std::scoped_lock monitor(instances.monitorOf(name));
    if (std::shared_ptr<QKSingleton> existing = instances.find(name)) {
        return existing;
    }
    std::shared_ptr<QKSingleton> made = make();
    instances.store(name, made);
    return made;
}

void QKSingleton::resetSharedInstances(const ClassDescription& receiver) {
    SharedInstances& instances = SharedInstances::ofAllClasses();
    const std::scoped_lock monitor(instances.monitorOf(receiver.name()));
    instances.removeAll();
}

} // namespace qk
