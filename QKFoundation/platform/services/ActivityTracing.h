// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <vector>

namespace qk::platform {

/// The system's activity tracing. Threads: any, at the same time.
class QK_EXPORT ActivityTracing {
public:
    ActivityTracing() = default;
    ActivityTracing(const ActivityTracing&) = delete;
    ActivityTracing& operator=(const ActivityTracing&) = delete;
    virtual ~ActivityTracing();

    /// `os_activity_set_breadcrumb`. Leaves a mark of what the user did.
    virtual void setBreadcrumb(const NSString& text) = 0;

    /// The last marks, at most 128, the oldest first.
    [[nodiscard]] virtual std::vector<NSString> breadcrumbs() const = 0;
};

} // namespace qk::platform
