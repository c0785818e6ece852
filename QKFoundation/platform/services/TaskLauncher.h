// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <variant>
#include <vector>

namespace qk::platform {

/// Where one of a child process's output streams goes.
enum class TaskStream {
    Inherit, ///< to this process's own stream
    Collect, ///< into the result, complete, in the order written
    Discard, ///< nowhere; the child never waits for a reader
};

/// A program to run. No shell is involved: the arguments reach the program as they are.
struct TaskRequest {
    NSString launchPath;                          ///< the program's file; not looked up anywhere
    std::vector<NSString> arguments;              ///< those behind the program's own name
    std::optional<NSString> currentDirectoryPath; ///< the child's working directory; nothing: this process's
    TaskStream standardOutput = TaskStream::Inherit;
    TaskStream standardError = TaskStream::Inherit; ///< `Inherit` or `Discard`
};

/// The program could not be started.
struct TaskLaunchFailure {
    int errorNumber = 0; ///< of <cerrno>, such as `ENOENT`
};

/// The program ran to its end.
struct TaskExit {
    int terminationStatus = 0;   ///< the exit status, or the signal's number when a signal ended the child
    bool uncaughtSignal = false; ///< whether a signal ended the child
    NSData output;               ///< what was collected
};

/// Child processes. Threads: any, at the same time; each call blocks its own thread until the child has ended.
class QK_EXPORT TaskLauncher {
public:
    TaskLauncher() = default;
    TaskLauncher(const TaskLauncher&) = delete;
    TaskLauncher& operator=(const TaskLauncher&) = delete;
    virtual ~TaskLauncher();

    /// Runs a program to its end. Collected output is drained while the child runs, so its size is limited by memory
    /// alone; a child of the child that keeps the stream open keeps the call waiting for the stream's end. The child
    /// starts with default signal dispositions and an empty signal mask, whatever this process has, and inherits no
    /// descriptors but its standard streams.
    [[nodiscard]] virtual std::variant<TaskLaunchFailure, TaskExit> run(const TaskRequest& request) = 0;
};

} // namespace qk::platform
