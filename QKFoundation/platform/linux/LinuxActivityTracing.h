// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/ActivityTracing.h"
#include "QKFoundation/platform/services/BreadcrumbRing.h"

namespace qk::platform {

/// Marks are kept in the process and told to the system's journal where there is one. Threads: any, at the same time.
class LinuxActivityTracing final : public ActivityTracing {
public:
    void setBreadcrumb(const NSString& text) override;
    [[nodiscard]] std::vector<NSString> breadcrumbs() const override { return ring_.texts(); }

private:
    BreadcrumbRing ring_;
};

} // namespace qk::platform
