// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSObject.h"

#include "QKFoundation/platform/objects/AssociatedObjects.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <functional>

namespace qk {

NSObject::~NSObject() {
    delete associations_.load(std::memory_order_acquire);
}

const ClassDescription& NSObject::describedClass() {
    // Never destroyed: objects may outlive the program's static ones.
    static const ClassDescription& description = *new ClassDescription("NSObject", nullptr);
    return description;
}

const ClassDescription& NSObject::classDescription() const {
    return describedClass();
}

bool NSObject::isEqual(const Value& other) const {
    return other.asObject<NSObject>().get() == this;
}

std::size_t NSObject::hash() const {
    return std::hash<const NSObject*>{}(this);
}

NSString NSObject::description() const {
    std::array<char, 2 * sizeof(std::uintptr_t)> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), reinterpret_cast<std::uintptr_t>(this), 16).ptr;
    NSMutableString text;
    text.append(u'<').append(classDescription().name()).append(u": 0x");
    for (const char* digit = digits.data(); digit != end; ++digit) {
        text.append(static_cast<char16_t>(*digit));
    }
    return text.append(u'>').copy();
}

bool NSObject::isKindOfClass(const ClassDescription& description) const {
    return classDescription().isSubclassOf(description);
}

bool NSObject::conformsToProtocol(const NSString& protocol) const {
    return classDescription().conformsToProtocol(protocol);
}

bool NSObject::respondsToSelector(const NSString& selector) const {
    return classDescription().method(selector) != nullptr;
}

std::optional<Value> NSObject::performSelector(const NSString& selector,
                                               std::span<const std::optional<Value>> arguments) {
    const std::shared_ptr<const ClassDescription::Method> method = classDescription().method(selector);
    if (method == nullptr) {
        return forward(selector, arguments);
    }
    std::optional<Value> result;
    if (arguments.size() != method->argumentCount || !method->perform(*this, arguments, result)) {
        throw NSInvalidArgumentException("the arguments do not fit the method " + selector + " of " +
                                         NSObject::description());
    }
    return result;
}

std::optional<Value> NSObject::forward(const NSString& selector, std::span<const std::optional<Value>> arguments) {
    const std::optional<NSMethodSignature> signature = methodSignatureForSelector(selector);
    if (!signature.has_value()) {
        doesNotRecognizeSelector(selector);
        return std::nullopt;
    }
    NSInvocation invocation(selector, {arguments.begin(), arguments.end()}, *signature);
    forwardInvocation(invocation);
    return invocation.returnValue();
}

std::optional<NSMethodSignature> NSObject::methodSignatureForSelector(const NSString& selector) const {
    const std::shared_ptr<const ClassDescription::Method> method = classDescription().method(selector);
    return method != nullptr ? std::optional(NSMethodSignature{method->argumentCount, method->zeroResult})
                             : std::nullopt;
}

void NSObject::forwardInvocation(NSInvocation& invocation) {
    doesNotRecognizeSelector(invocation.selector());
}

void NSInvocation::invokeWithTarget(NSObject& target) {
    result_ = target.performSelector(selector_, arguments_);
}

void NSObject::doesNotRecognizeSelector(const NSString& selector) const {
    throw NSInvalidArgumentException("unrecognized selector " + selector + " sent to " + NSObject::description());
}

std::optional<Value> NSObject::valueForKey(const NSString& key) const {
    const ClassDescription::Property* property = classDescription().property(key);
    if (property == nullptr) {
        throw NSUndefinedKeyException(key, NSObject::description() + " has no value for the key " + key);
    }
    return property->get(*this);
}

void NSObject::setValueForKey(const std::optional<Value>& value, const NSString& key) {
    const ClassDescription::Property* property = classDescription().property(key);
    if (property == nullptr || !property->set) {
        throw NSUndefinedKeyException(key, NSObject::description() + " cannot set the key " + key);
    }
    const auto alive = weak_from_this().lock(); // an observer of the property may let go of the object
    if (!property->set(*this, value)) {
        throw NSInvalidArgumentException("the key " + key + " of " + NSObject::description() +
                                         " cannot take that value");
    }
}

NSDictionary NSObject::dictionaryWithValuesForKeys(const std::vector<NSString>& keys) const {
    std::vector<NSDictionary::Entry> entries;
    entries.reserve(keys.size());
    for (const NSString& key : keys) {
        entries.emplace_back(key, valueForKey(key).value_or(NSNull{}));
    }
    return NSDictionary(std::move(entries));
}

} // namespace qk
