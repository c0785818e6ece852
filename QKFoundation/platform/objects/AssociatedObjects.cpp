// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/AssociatedObjects.h"

#include "QKFoundation/platform/objects/NSCopying.h"

#include <utility>

namespace qk {
namespace {

bool copies(objc_AssociationPolicy policy) {
    return policy == objc_AssociationPolicy::OBJC_ASSOCIATION_COPY_NONATOMIC ||
           policy == objc_AssociationPolicy::OBJC_ASSOCIATION_COPY;
}

Value copyOf(const Value& value) {
    const std::shared_ptr<NSObject> object = value.asObject<NSObject>();
    if (object == nullptr) {
        return value;
    }
    const auto* copying = dynamic_cast<const NSCopying*>(object.get());
    if (copying == nullptr) {
        object->doesNotRecognizeSelector("copyWithZone:");
        return value;
    }
    return copying->copyWithZone();
}

} // namespace

namespace internal {

Associations* Associations::of(const NSObject& object) noexcept {
    return object.associations_.load(std::memory_order_acquire);
}

Associations& Associations::madeFor(NSObject& object) {
    if (Associations* existing = of(object)) {
        return *existing;
    }
    auto made = std::make_unique<Associations>();
    Associations* current = nullptr;
    if (object.associations_.compare_exchange_strong(current, made.get(), std::memory_order_acq_rel)) {
        return *made.release();
    }
    return *current;
}

void Associations::set(const void* key, const std::optional<Value>& value, objc_AssociationPolicy policy) {
    std::optional<Attached> next;
    if (value.has_value()) {
        const std::shared_ptr<NSObjectProtocol> object = value->asObject<NSObjectProtocol>();
        if (policy == objc_AssociationPolicy::OBJC_ASSOCIATION_ASSIGN && object != nullptr) {
            next = Unretained(object);
        } else {
            next = copies(policy) ? copyOf(*value) : *value;
        }
    }
    std::optional<Attached> previous; // let go of behind the lock: its destruction may run code of others
    const std::scoped_lock lock(mutex_);
    if (const auto found = attached_.find(key); found != attached_.end()) {
        previous = std::move(found->second);
        attached_.erase(found);
    }
    if (next.has_value()) {
        attached_.emplace(key, *std::move(next));
    }
}

std::optional<Value> Associations::get(const void* key) const {
    const std::scoped_lock lock(mutex_);
    const auto found = attached_.find(key);
    if (found == attached_.end()) {
        return std::nullopt;
    }
    if (const auto* unretained = std::get_if<Unretained>(&found->second)) {
        const std::shared_ptr<NSObjectProtocol> object = unretained->lock();
        return object != nullptr ? std::optional<Value>(object) : std::nullopt;
    }
    return std::get<Value>(found->second);
}

} // namespace internal

void objc_setAssociatedObject(NSObject& object, const void* key, const std::optional<Value>& value,
                              objc_AssociationPolicy policy) {
    if (value.has_value()) {
        internal::Associations::madeFor(object).set(key, value, policy);
    } else if (internal::Associations* existing = internal::Associations::of(object)) {
        existing->set(key, value, policy);
    }
}

std::optional<Value> objc_getAssociatedObject(const NSObject& object, const void* key) {
    const internal::Associations* existing = internal::Associations::of(object);
    return existing != nullptr ? existing->get(key) : std::nullopt;
}

} // namespace qk
