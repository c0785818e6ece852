// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxDispatch.h"
#include "QKFoundation/platform/services/SignalSources.h"

#include <memory>
#include <utility>

namespace qk::platform {

/// Signals as events of the main run loop. While a source lives, its signal has a handler that writes to the source's
/// eventfd (with SA_RESTART); when the last one of a signal is gone, the signal is ignored. At most 16 sources live per
/// signal. Threads: any, at the same time.
class LinuxSignalSources final : public SignalSources {
public:
    explicit LinuxSignalSources(std::shared_ptr<LinuxDispatch> dispatch) : dispatch_(std::move(dispatch)) {}

    /// Does nothing while a source of the signal lives, which has taken it over already.
    void ignoreSignal(std::int32_t signal) override;
    [[nodiscard]] std::unique_ptr<SignalSource> makeSignalSource(std::int32_t signal,
                                                                 std::function<void()> handler) override;

private:
    std::shared_ptr<LinuxDispatch> dispatch_;
};

} // namespace qk::platform
