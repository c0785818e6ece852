// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/TaskLauncher.h"

#include <string>
#include <utility>
#include <vector>

namespace qk::platform {

/// A program that runs in the place of one that this system does not have.
struct ProgramSubstitute {
    std::string launchPath; ///< what is asked for; when this file exists, it runs itself
    std::string program;    ///< what runs instead
};

/// Children through posix_spawn(3), so that starting one costs the same however much memory this process holds. Paths
/// and arguments reach the child in their file-system representation; one without (U+0000, a lone surrogate that stands
/// for no byte) is a launch failure `EINVAL`. A relative launch path is looked up in the child's folder. A standard
/// stream that this process has closed is /dev/null in the child.
///
/// A host that ignores SIGCHLD, or waits for all children elsewhere, takes the end of ours away: the call still returns
/// when the child has ended, with all output, and `terminationStatus` is then 255, since how it ended is not known.
class LinuxTaskLauncher final : public TaskLauncher {
public:
    explicit LinuxTaskLauncher(std::vector<ProgramSubstitute> substitutes = {})
        : substitutes_(std::move(substitutes)) {}

    [[nodiscard]] std::variant<TaskLaunchFailure, TaskExit> run(const TaskRequest& request) override;

private:
    [[nodiscard]] const std::string& programFor(const std::string& launchPath) const;

    std::vector<ProgramSubstitute> substitutes_;
};

} // namespace qk::platform
