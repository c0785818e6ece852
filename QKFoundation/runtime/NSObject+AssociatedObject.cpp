// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/AssociatedObjects.h"
#include "QKFoundation/runtime/NSObject+AssociatedObject.h"

namespace qk::NSObject_AssociatedObject {

using enum objc_AssociationPolicy;

void setAssociatedAssignedValue(NSObject& self, const std::optional<Value>& value, const void* withKey) {
    objc_setAssociatedObject(self, withKey, value, OBJC_ASSOCIATION_ASSIGN);
}

void setAssociatedNonatomicRetainedValue(NSObject& self, const std::optional<Value>& value, const void* withKey) {
    objc_setAssociatedObject(self, withKey, value, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

void setAssociatedNonatomicCopiedAssignValue(NSObject& self, const std::optional<Value>& value, const void* withKey) {
    objc_setAssociatedObject(self, withKey, value, OBJC_ASSOCIATION_COPY_NONATOMIC);
}

void setAssociatedRetainedValue(NSObject& self, const std::optional<Value>& value, const void* withKey) {
    objc_setAssociatedObject(self, withKey, value, OBJC_ASSOCIATION_RETAIN);
}

void setAssociatedCopiedValue(NSObject& self, const std::optional<Value>& value, const void* withKey) {
    objc_setAssociatedObject(self, withKey, value, OBJC_ASSOCIATION_COPY);
}

std::optional<Value> getAssociatedValueForKey(const NSObject& self, const void* key) {
    return objc_getAssociatedObject(self, key);
}

} // namespace qk::NSObject_AssociatedObject
