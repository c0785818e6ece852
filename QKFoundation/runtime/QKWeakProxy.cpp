// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKWeakProxy.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

// No methods of its own: every message is the target's.
const ClassDescription& QKWeakProxy::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKWeakProxy>("QKWeakProxy", NSObject::describedClass()).build();
    return description;
}

const ClassDescription& QKWeakProxy::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKWeakProxy> QKWeakProxy::initWithObject(NSObject* object) {
    return std::shared_ptr<QKWeakProxy>(new QKWeakProxy(object));
}

bool QKWeakProxy::respondsToSelector(const NSString& selector) const {
    return target_ != nullptr && target_->respondsToSelector(selector);
}

std::optional<NSMethodSignature> QKWeakProxy::methodSignatureForSelector(const NSString& selector) const {
    if (target_ == nullptr) {
        return std::nullopt;
    }
    return target_->methodSignatureForSelector(selector).value_or(NSMethodSignature{});
}

void QKWeakProxy::forwardInvocation(NSInvocation& invocation) {
    if (respondsToSelector(invocation.selector())) {
        invocation.invokeWithTarget(*target_);
    }
}

void QKWeakProxy::observeValueForKeyPath(const NSString& keyPath, NSObject& ofObject, const NSDictionary& change,
                                         void* context) {
    if (target_ == nullptr) {
        doesNotRecognizeSelector("observeValueForKeyPath:ofObject:change:context:");
        return;
    }
    target_->observeValueForKeyPath(keyPath, ofObject, change, context);
}

} // namespace qk
