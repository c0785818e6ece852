// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace qk::platform {

/// Calls back for a signal for as long as it lives; afterwards the signal is ignored.
class QK_EXPORT SignalSource {
public:
    SignalSource() = default;
    SignalSource(const SignalSource&) = delete;
    SignalSource& operator=(const SignalSource&) = delete;
    virtual ~SignalSource();
};

/// POSIX signals as events. Threads: any, at the same time.
class QK_EXPORT SignalSources {
public:
    SignalSources() = default;
    SignalSources(const SignalSources&) = delete;
    SignalSources& operator=(const SignalSources&) = delete;
    virtual ~SignalSources();

    /// `signal` with `SIG_IGN`. Signals that cannot be ignored stay as they are.
    virtual void ignoreSignal(std::int32_t signal) = 0;

    /// `dispatch_source_create` of type signal on the main queue. Calls `handler` there for each delivery; several
    /// deliveries may become one call. Null for a signal that cannot be watched.
    [[nodiscard]] virtual std::unique_ptr<SignalSource> makeSignalSource(std::int32_t signal,
                                                                         std::function<void()> handler) = 0;
};

} // namespace qk::platform
