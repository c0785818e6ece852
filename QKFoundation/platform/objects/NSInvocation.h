// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace qk {

class NSObject;

/// `NSMethodSignature`. What a method takes, and what stands for its result when it was not called: 0 or false for a
/// number, nothing for everything else. Threads: a plain value.
struct NSMethodSignature {
    std::size_t numberOfArguments = 0;
    std::optional<Value> zeroResult;
};

/// `NSInvocation`. A message that nobody has answered yet: its selector, its arguments and, once it was invoked, its
/// result. Threads: one at a time.
class QK_EXPORT NSInvocation {
public:
    NSInvocation(NSString selector, std::vector<std::optional<Value>> arguments, NSMethodSignature signature)
        : selector_(std::move(selector)), arguments_(std::move(arguments)), result_(std::move(signature.zeroResult)) {}

    [[nodiscard]] const NSString& selector() const noexcept { return selector_; }
    [[nodiscard]] const std::vector<std::optional<Value>>& arguments() const noexcept { return arguments_; }

    /// What the message gives; the signature's zero while it was not invoked.
    [[nodiscard]] const std::optional<Value>& returnValue() const noexcept { return result_; }
    void setReturnValue(std::optional<Value> value) { result_ = std::move(value); }

    /// `invokeWithTarget:`. Sends the message to `target` and keeps the result. Raises as `performSelector` does.
    void invokeWithTarget(NSObject& target);

private:
    NSString selector_;
    std::vector<std::optional<Value>> arguments_;
    std::optional<Value> result_;
};

} // namespace qk
