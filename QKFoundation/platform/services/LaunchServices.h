// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <cstdint>

namespace qk::platform {

/// Opens things with the application that is meant for them. Threads: any, at the same time; a call may wait.
class QK_EXPORT LaunchServices {
public:
    static constexpr std::int32_t noErr = 0;
    static constexpr std::int32_t kLSApplicationNotFoundErr = -10814;

    LaunchServices() = default;
    LaunchServices(const LaunchServices&) = delete;
    LaunchServices& operator=(const LaunchServices&) = delete;
    virtual ~LaunchServices();

    /// `LSOpenCFURLRef`. `noErr` when `url` was handed to an application, else the reason why not.
    [[nodiscard]] virtual std::int32_t openURL(const NSURL& url) = 0;
};

} // namespace qk::platform
