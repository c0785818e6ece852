// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <vector>

namespace qk {

/// `QKOSActivityManager`: marks meaningful actions of the user ("breadcrumbs"), so that a crash report or a trace shows
/// the last thing that was done.
///
/// On Linux the last 128 marks are kept in the process, and each is written to the system's journal where there is one.
/// Threads: any, at the same time.
class QK_EXPORT QKOSActivityManager {
public:
    QKOSActivityManager() = delete;

    /// `hasActivityTracing`. Whether the running operating system is newer than 10.9, as `OSVersionIsGreaterThan` says.
    [[nodiscard]] static bool hasActivityTracing();

    /// `breadcrumbForAction:`. Marks the action of that number, 1 ("Common: Exit Pelagor") to 46 ("Toolbar: Request
    /// direction change"). Does nothing for other numbers and on a system without activity tracing.
    static void breadcrumbForAction(std::int64_t action);

    /// The marks that this process keeps, at most 128, the oldest first: for the host to show or to add to a crash
    /// text.
    [[nodiscard]] static std::vector<NSString> breadcrumbs();
};

} // namespace qk
