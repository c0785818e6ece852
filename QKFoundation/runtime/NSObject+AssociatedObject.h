// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include <optional>

/// `NSObject(AssociatedObject)`: values attached to any object, each under the address of something that only the owner
/// of the value knows.
///
/// Attaching nothing takes the attachment away; what was attached goes when the object does. Threads: any, at the same
/// time, whatever the operation.
namespace qk::NSObject_AssociatedObject {

/// `setAssociatedAssignedValue:withKey:`. Not retained (`OBJC_ASSOCIATION_ASSIGN`): an object reads as nothing once it
/// is gone.
QK_EXPORT void setAssociatedAssignedValue(NSObject& self, const std::optional<Value>& value, const void* withKey);

/// `setAssociatedNonatomicRetainedValue:withKey:`. Retained (`OBJC_ASSOCIATION_RETAIN_NONATOMIC`).
QK_EXPORT void setAssociatedNonatomicRetainedValue(NSObject& self, const std::optional<Value>& value,
                                                   const void* withKey);

/// `setAssociatedNonatomicCopiedAssignValue:withKey:`. A copy is kept (`OBJC_ASSOCIATION_COPY_NONATOMIC`), despite
/// "Assign" in the name. Raises `NSInvalidArgumentException` for an object that does not adopt `NSCopying`.
QK_EXPORT void setAssociatedNonatomicCopiedAssignValue(NSObject& self, const std::optional<Value>& value,
                                                       const void* withKey);

/// `setAssociatedRetainedValue:withKey:`. Retained (`OBJC_ASSOCIATION_RETAIN`).
QK_EXPORT void setAssociatedRetainedValue(NSObject& self, const std::optional<Value>& value, const void* withKey);

/// `setAssociatedCopiedValue:withKey:`. A copy is kept (`OBJC_ASSOCIATION_COPY`); raises as above.
QK_EXPORT void setAssociatedCopiedValue(NSObject& self, const std::optional<Value>& value, const void* withKey);

/// `getAssociatedValueForKey:`. What is attached under `key`; nothing when nothing is.
[[nodiscard]] QK_EXPORT std::optional<Value> getAssociatedValueForKey(const NSObject& self, const void* key);

} // namespace qk::NSObject_AssociatedObject
