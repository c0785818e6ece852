// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/TaskLauncher.h"

#include <functional>
#include <map>
#include <mutex>
#include <vector>

namespace qk::platform::memory {

/// Programs in code. Threads: any, at the same time; a program runs on its caller's thread.
class QK_EXPORT MemoryTaskLauncher final : public TaskLauncher {
public:
    /// What a program does: it is given the request and returns how it ended and what it wrote to standard output.
    using Program = std::function<TaskExit(const TaskRequest&)>;

    /// There is a program at `path`.
    void addProgram(const NSString& path, Program program);

    /// A program at `path` that writes `output` and exits with `status`.
    void addProgram(const NSString& path, const NSData& output, int status = 0);

    /// Launching `path` fails with `errorNumber`. Without this and without a program there, it fails with `ENOENT`.
    void failLaunches(const NSString& path, int errorNumber);

    /// All requests so far, those that failed included, in order.
    [[nodiscard]] std::vector<TaskRequest> requests() const;

    [[nodiscard]] std::variant<TaskLaunchFailure, TaskExit> run(const TaskRequest& request) override;

private:
    mutable std::mutex mutex_;
    std::map<NSString, std::variant<TaskLaunchFailure, Program>> programs_;
    std::vector<TaskRequest> requests_;
};

} // namespace qk::platform::memory
