// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/services/SignalSources.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace qk {

/// `QKSignalHandler`: a POSIX signal as a callback on the main thread, which runs its run loop.
///
/// Deliberate: the signal stays ignored when the handler is gone; nobody restores what it did before.
/// Threads: made and destroyed on any.
class QK_EXPORT QKSignalHandler : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithSignal:block:`. From now on the signal does nothing but call `block` on the main queue; several
    /// deliveries may become one call. Without a block it is only ignored. Null for the signal 0, which changes
    /// nothing. For a signal that cannot be ignored, such as SIGKILL, there is an object without a source.
    [[nodiscard]] static std::shared_ptr<QKSignalHandler> initWithSignal(std::int32_t signal,
                                                                         std::function<void()> block);

    ~QKSignalHandler() override;

    /// `source`. What delivers the signal; null when nothing does.
    [[nodiscard]] const platform::SignalSource* source() const noexcept { return source_.get(); }

private:
    QKSignalHandler() = default;

    std::unique_ptr<platform::SignalSource> source_;
};

} // namespace qk
