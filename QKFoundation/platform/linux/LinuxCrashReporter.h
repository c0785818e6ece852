// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/CrashReporter.h"

namespace qk::platform {

/// The slot of a program that exports "__crashreporter_info__" (a `const char*`; linked with -rdynamic). No system
/// service of Linux reads it; a crash handler of the program's own may. Threads: any.
class LinuxCrashReporter final : public CrashReporter {
public:
    [[nodiscard]] const char** informationSlot() override;
};

} // namespace qk::platform
