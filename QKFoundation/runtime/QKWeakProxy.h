// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>
#include <optional>

namespace qk {

/// `QKWeakProxy`: passes the messages that it gets (`performSelector`) on to an object that it does not keep alive; for
/// a timer or an observer that would otherwise hold its owner.
///
/// The target is neither retained nor cleared when it dies: its owner outlives the proxy, or clears the target.
/// Threads: those of the target.
class QK_EXPORT QKWeakProxy : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithObject:`. A proxy for `object`, which may be null.
    [[nodiscard]] static std::shared_ptr<QKWeakProxy> initWithObject(NSObject* object);

    /// `qkUnsafeUnretainedContentObject`. The target; null when there is none.
    [[nodiscard]] NSObject* qkUnsafeUnretainedContentObject() const noexcept { return target_; }
    void setQkUnsafeUnretainedContentObject(NSObject* object) noexcept { target_ = object; }

    /// Whether the target does; false without one.
    [[nodiscard]] bool respondsToSelector(const NSString& selector) const override;

    /// `methodSignatureForSelector:`. The target's; that of a message without arguments and result for a selector that
    /// it does not have. Nothing without a target: a message is then one that the proxy does not recognise.
    [[nodiscard]] std::optional<NSMethodSignature> methodSignatureForSelector(const NSString& selector) const override;

    /// `forwardInvocation:`. Sends the message to the target when that responds to it; drops it otherwise, and its
    /// sender sees 0, false or nothing.
    void forwardInvocation(NSInvocation& invocation) override;

    /// `observeValueForKeyPath:ofObject:change:context:`. Tells the target, so that a proxy can be added as an observer
    /// in its place. Raises `NSInvalidArgumentException` (by `doesNotRecognizeSelector`) without one.
    void observeValueForKeyPath(const NSString& keyPath, NSObject& ofObject, const NSDictionary& change,
                                void* context) override;

private:
    explicit QKWeakProxy(NSObject* object) noexcept : target_(object) {}

    NSObject* target_;
};

} // namespace qk
