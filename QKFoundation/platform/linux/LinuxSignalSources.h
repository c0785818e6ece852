// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxDispatch.h"
#include "QKFoundation/platform/services/SignalSources.h"

#include <memory>
#include <utility>

namespace qk::platform {

/// Signals as events of the main run loop. While a source lives, its signal has a handler that writes to the source's
/// eventfd (with SA_RESTART); when the last one of a signal is gone, the signal is ignored, unless somebody else has
/// put a handler of their own in the place of ours. At most 16 sources live per signal.
///
/// A signal that the kernel raises for a fault (SIGSEGV and its like) ends the process all the same, as an ignored one
/// does. In a child made by fork the signal does nothing. A signal that all threads block is not seen until one lets
/// it through. Threads: any, at the same time.
class LinuxSignalSources final : public SignalSources {
public:
    explicit LinuxSignalSources(std::shared_ptr<LinuxDispatch> dispatch) : dispatch_(std::move(dispatch)) {}

    /// While a source of the signal lives, which calls back instead of the default action, that goes on.
    void ignoreSignal(std::int32_t signal) override;
    [[nodiscard]] std::unique_ptr<SignalSource> makeSignalSource(std::int32_t signal,
                                                                 std::function<void()> handler) override;

private:
    std::shared_ptr<LinuxDispatch> dispatch_;
};

} // namespace qk::platform
