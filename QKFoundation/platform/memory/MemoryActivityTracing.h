// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/ActivityTracing.h"
#include "QKFoundation/platform/services/BreadcrumbRing.h"

namespace qk::platform::memory {

/// Activity tracing that keeps the marks, and nothing else. Threads: any, at the same time.
class QK_EXPORT MemoryActivityTracing final : public ActivityTracing {
public:
    void setBreadcrumb(const NSString& text) override { ring_.add(text); }
    [[nodiscard]] std::vector<NSString> breadcrumbs() const override { return ring_.texts(); }

private:
    BreadcrumbRing ring_;
};

} // namespace qk::platform::memory
