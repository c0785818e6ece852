// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/LaunchServices.h"
#include "QKFoundation/platform/services/TaskLauncher.h"

#include <memory>
#include <string>
#include <utility>

namespace qk::platform {

/// Hands URLs to the desktop's portal when a session bus (DBUS_SESSION_BUS_ADDRESS, else XDG_RUNTIME_DIR) and the
/// portal run; else to the program "xdg-open", else "gio open", found in PATH, whose exit status 0 is success. A call
/// waits for that program's end. A URL without a scheme is nobody's. Threads: any, at the same time.
class LinuxLaunchServices final : public LaunchServices {
public:
    explicit LinuxLaunchServices(std::shared_ptr<TaskLauncher> launcher, Variables variables = processVariable)
        : launcher_(std::move(launcher)), variables_(std::move(variables)) {}

    [[nodiscard]] std::int32_t openURL(const NSURL& url) override;

private:
    [[nodiscard]] bool openWithProgram(const NSString& url) const;
    [[nodiscard]] std::string programNamed(const std::string& name) const;

    std::shared_ptr<TaskLauncher> launcher_;
    Variables variables_;
};

/// A machine whose files are looked at from outside: nothing can be opened on it. Threads: any.
class NoLaunchServices final : public LaunchServices {
public:
    [[nodiscard]] std::int32_t openURL(const NSURL& /*url*/) override { return kLSApplicationNotFoundErr; }
};

} // namespace qk::platform
