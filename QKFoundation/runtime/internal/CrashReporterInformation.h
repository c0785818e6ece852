// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>

namespace qk::internal {

/// What the process publishes for its crash report. The process has one. Threads: any, at the same time.
class CrashReporterInformation {
public:
    /// Looks for the slot the first time that it is called.
    void setString(const platform::Services& services, const std::optional<NSString>& string);

private:
    struct Free {
        void operator()(char* text) const noexcept { std::free(text); }
    };

    std::once_flag isInitialised_;          // `InitCrashReporterInfo`
    const char** slot_ = nullptr;           // `sCrashReporterInfo`; `sCrashReporterInfoAvailable` when it is not null
    std::mutex mutex_;                      // `sCrashReporterInfoLock`: guards what the slot holds and what follows
    std::unique_ptr<char, Free> published_; // `sOldCrashReporterInfo`
};

} // namespace qk::internal
