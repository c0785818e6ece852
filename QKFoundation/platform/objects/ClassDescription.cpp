// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/ClassDescription.h"

#include "QKFoundation/platform/objects/NSException.h"

#include <mutex>
#include <shared_mutex>

namespace qk {
namespace {

// Guards what the selectors of all classes lead to. Never destroyed: methods are called while the process ends.
std::shared_mutex& implementations() {
    static std::shared_mutex* const mutex = new std::shared_mutex;
    return *mutex;
}

template <typename Slot>
void exchange(Slot* one, Slot* other) {
    if (one != nullptr && other != nullptr) {
        one->swap(*other);
    }
}

} // namespace

// Where the nearest class, from this one upwards, keeps what `selector` leads to; null when none has it.
template <typename SlotsOf>
auto* ClassDescription::slotOf(const NSString& selector, SlotsOf slotsOf) const {
    for (const ClassDescription* description = this; description != nullptr; description = description->superclass_) {
        auto& slots = slotsOf(*description);
        if (const auto found = slots.find(selector); found != slots.end()) {
            return &found->second;
        }
    }
    return static_cast<decltype(&slotsOf(*this).begin()->second)>(nullptr);
}

ClassDescription::ClassDescription(NSString name, const ClassDescription* superclass)
    : name_(std::move(name)), superclass_(superclass) {}

bool ClassDescription::isSubclassOf(const ClassDescription& other) const noexcept {
    const ClassDescription* description = this;
    while (description != nullptr && description != &other) {
        description = description->superclass_;
    }
    return description != nullptr;
}

const ClassDescription::Property* ClassDescription::property(const NSString& key) const {
    for (const ClassDescription* description = this; description != nullptr; description = description->superclass_) {
        if (const auto found = description->properties_.find(key); found != description->properties_.end()) {
            return &found->second;
        }
    }
    return nullptr;
}

std::shared_ptr<const ClassDescription::Method> ClassDescription::method(const NSString& selector) const {
    const std::shared_lock lock(implementations());
    const auto* slot = slotOf(
        selector, [](const ClassDescription& each) -> auto& { return each.methods_; });
    return slot != nullptr ? *slot : nullptr;
}

std::shared_ptr<const ClassDescription::ClassMethod> ClassDescription::classMethod(const NSString& selector) const {
    const std::shared_lock lock(implementations());
    const auto* slot = slotOf(
        selector, [](const ClassDescription& each) -> auto& { return each.classMethods_; });
    return slot != nullptr ? *slot : nullptr;
}

std::optional<Value> ClassDescription::performClassSelector(const NSString& selector, Arguments arguments) const {
    const std::shared_ptr<const ClassMethod> found = classMethod(selector);
    if (found == nullptr) {
        throw NSInvalidArgumentException("unrecognized selector " + selector + " sent to the class " + name_);
    }
    std::optional<Value> result;
    if (arguments.size() != found->argumentCount || !found->perform(arguments, result)) {
        throw NSInvalidArgumentException("the arguments do not fit the method " + selector + " of the class " + name_);
    }
    return result;
}

void ClassDescription::exchangeMethods(const NSString& selector, const NSString& with) const {
    const std::unique_lock lock(implementations());
    const auto methodsOf = [](const ClassDescription& each) -> auto& {
        return each.methods_;
    };
    exchange(slotOf(selector, methodsOf), slotOf(with, methodsOf));
}

void ClassDescription::exchangeClassMethods(const NSString& selector, const NSString& with) const {
    const std::unique_lock lock(implementations());
    const auto methodsOf = [](const ClassDescription& each) -> auto& {
        return each.classMethods_;
    };
    exchange(slotOf(selector, methodsOf), slotOf(with, methodsOf));
}

bool ClassDescription::conformsToProtocol(const NSString& protocol) const {
    for (const ClassDescription* description = this; description != nullptr; description = description->superclass_) {
        if (description->protocols_.contains(protocol)) {
            return true;
        }
    }
    return false;
}

} // namespace qk
