// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/CrashReporter.h"
#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/services/SignalSources.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace qk::platform::memory {

/// Signals that come when they are told to. What a real process would do with them is an answer, not an action.
/// Threads: any, at the same time.
class QK_EXPORT MemorySignalSources final : public SignalSources {
public:
    /// What a signal did that was delivered.
    enum class Effect { Default, Ignored, Called };

    explicit MemorySignalSources(std::shared_ptr<Dispatch> dispatch);
    ~MemorySignalSources() override;

    /// The signal arrives: the handlers of its sources are called when the main run loop is drained.
    Effect deliver(std::int32_t signal);

    void ignoreSignal(std::int32_t signal) override;
    [[nodiscard]] std::unique_ptr<SignalSource> makeSignalSource(std::int32_t signal,
                                                                 std::function<void()> handler) override;

private:
    class Source;
    using Handler = std::function<void()>;
    struct Dispositions {
        std::mutex mutex;
        std::map<std::int32_t, std::vector<std::weak_ptr<Handler>>> sources; // a signal that is not in it is untouched
    };

    std::shared_ptr<Dispatch> dispatch_;
    std::shared_ptr<Dispositions> dispositions_;
};

/// A process that offers a text to the crash reporter when it is told to. Threads: one at a time; the text that is
/// published may be replaced on any, but is asked for when nobody does.
class QK_EXPORT MemoryCrashReporter final : public CrashReporter {
public:
    /// The process has a slot for the text; without one before that.
    void offerSlot() { hasSlot_ = true; }

    /// The text that is published; null when there is none.
    [[nodiscard]] const char* text() const { return text_; }

    [[nodiscard]] const char** informationSlot() override { return hasSlot_ ? &text_ : nullptr; }

private:
    bool hasSlot_ = false;
    const char* text_ = nullptr;
};

} // namespace qk::platform::memory
