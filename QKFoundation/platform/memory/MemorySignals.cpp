// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemorySignals.h"

#include <utility>

namespace qk::platform::memory {
namespace {

constexpr std::int32_t kLastSignal = 64;

// No process can ignore SIGKILL and SIGSTOP, which are numbered as on Linux.
bool canBeIgnored(std::int32_t signal) {
    constexpr std::int32_t kKill = 9;
    constexpr std::int32_t kStop = 19;
    return signal > 0 && signal <= kLastSignal && signal != kKill && signal != kStop;
}

} // namespace

class MemorySignalSources::Source final : public SignalSource {
public:
    explicit Source(std::shared_ptr<Handler> handler) : handler_(std::move(handler)) {}

private:
    std::shared_ptr<Handler> handler_;
};

MemorySignalSources::MemorySignalSources(std::shared_ptr<Dispatch> dispatch)
    : dispatch_(std::move(dispatch)), dispositions_(std::make_shared<Dispositions>()) {}

MemorySignalSources::~MemorySignalSources() = default;

MemorySignalSources::Effect MemorySignalSources::deliver(std::int32_t signal) {
    const std::scoped_lock lock(dispositions_->mutex);
    const auto found = dispositions_->sources.find(signal);
    if (found == dispositions_->sources.end()) {
        return Effect::Default;
    }
    Effect effect = Effect::Ignored;
    for (const std::weak_ptr<Handler>& handler : found->second) {
        if (!handler.expired()) {
            effect = Effect::Called;
            dispatch_->asyncOnMainQueue([handler] {
                if (const auto alive = handler.lock()) {
                    (*alive)();
                }
            });
        }
    }
    return effect;
}

void MemorySignalSources::ignoreSignal(std::int32_t signal) {
    if (canBeIgnored(signal)) {
        const std::scoped_lock lock(dispositions_->mutex);
        dispositions_->sources.try_emplace(signal);
    }
}

std::unique_ptr<SignalSource> MemorySignalSources::makeSignalSource(std::int32_t signal,
                                                                    std::function<void()> handler) {
    if (!canBeIgnored(signal)) {
        return nullptr;
    }
    auto kept = std::make_shared<Handler>(std::move(handler));
    const std::scoped_lock lock(dispositions_->mutex);
    dispositions_->sources[signal].push_back(kept);
    return std::make_unique<Source>(std::move(kept));
}

} // namespace qk::platform::memory
