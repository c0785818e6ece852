// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

namespace qk::platform {

/// Where a program offers a text to the system's crash reporter. Threads: any, at the same time.
class QK_EXPORT CrashReporter {
public:
    CrashReporter() = default;
    CrashReporter(const CrashReporter&) = delete;
    CrashReporter& operator=(const CrashReporter&) = delete;
    virtual ~CrashReporter();

    /// `dlsym` of "__crashreporter_info__" in the global scope: the pointer to a zero-terminated UTF-8 text that the
    /// reporter reads; null when this process has none. It stays where it is for the life of the process.
    [[nodiscard]] virtual const char** informationSlot() = 0;
};

} // namespace qk::platform
