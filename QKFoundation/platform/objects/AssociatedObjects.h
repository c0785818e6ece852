// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <variant>

namespace qk {

/// `objc_AssociationPolicy`: how an associated value is held.
enum class objc_AssociationPolicy : std::uintptr_t {
    OBJC_ASSOCIATION_ASSIGN = 0,           ///< not retained
    OBJC_ASSOCIATION_RETAIN_NONATOMIC = 1, ///< retained
    OBJC_ASSOCIATION_COPY_NONATOMIC = 3,   ///< a copy is retained
    OBJC_ASSOCIATION_RETAIN = 01401,       ///< retained; may be set and read on several threads
    OBJC_ASSOCIATION_COPY = 01403,         ///< a copy is retained; may be set and read on several threads
};

/// `objc_setAssociatedObject`. Attaches `value` to `object` under `key`, an address that only its owner knows, in the
/// place of what was there; nothing takes it away. Values that were attached go when the object does.
///
/// An object that is not retained reads as nothing once it is gone, and must live in a `std::shared_ptr`. Copying keeps
/// `copyWithZone:` of an object, and raises `NSInvalidArgumentException` for one that does not adopt `NSCopying`; value
/// types are their own copies. Threads: any, whatever the policy.
QK_EXPORT void objc_setAssociatedObject(NSObject& object, const void* key, const std::optional<Value>& value,
                                        objc_AssociationPolicy policy);

/// `objc_getAssociatedObject`. What is attached to `object` under `key`; nothing when nothing is. Threads: any.
[[nodiscard]] QK_EXPORT std::optional<Value> objc_getAssociatedObject(const NSObject& object, const void* key);

namespace internal {

/// The values that are attached to one object. Threads: any.
class Associations {
public:
    /// Those of `object`; null when nothing was attached to it yet.
    [[nodiscard]] static Associations* of(const NSObject& object) noexcept;

    /// Those of `object`, made now when there are none.
    [[nodiscard]] static Associations& madeFor(NSObject& object);

    void set(const void* key, const std::optional<Value>& value, objc_AssociationPolicy policy);
    [[nodiscard]] std::optional<Value> get(const void* key) const;

private:
    using Unretained = std::weak_ptr<NSObjectProtocol>;
    using Attached = std::variant<Value, Unretained>;

    mutable std::mutex mutex_;
    std::map<const void*, Attached> attached_;
};

} // namespace internal
} // namespace qk
