// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryTaskLauncher.h"

#include <cerrno>
#include <utility>

namespace qk::platform::memory {

void MemoryTaskLauncher::addProgram(const NSString& path, Program program) {
    const std::scoped_lock lock(mutex_);
    programs_[path] = std::move(program);
}

void MemoryTaskLauncher::addProgram(const NSString& path, const NSData& output, int status) {
    addProgram(path, [output, status](const TaskRequest&) { return TaskExit{status, false, output}; });
}

void MemoryTaskLauncher::failLaunches(const NSString& path, int errorNumber) {
    const std::scoped_lock lock(mutex_);
    programs_[path] = TaskLaunchFailure{errorNumber};
}

std::vector<TaskRequest> MemoryTaskLauncher::requests() const {
    const std::scoped_lock lock(mutex_);
    return requests_;
}

std::variant<TaskLaunchFailure, TaskExit> MemoryTaskLauncher::run(const TaskRequest& request) {
    Program program;
    {
        const std::scoped_lock lock(mutex_);
        requests_.push_back(request);
        const auto found = programs_.find(request.launchPath);
        if (found == programs_.end()) {
            return TaskLaunchFailure{ENOENT};
        }
        if (const auto* failure = std::get_if<TaskLaunchFailure>(&found->second)) {
            return *failure;
        }
        program = std::get<Program>(found->second);
    }
    TaskExit exit = program(request); // without the lock: a program may run others
    if (request.standardOutput != TaskStream::Collect) {
        exit.output = NSData();
    }
    return exit;
}

} // namespace qk::platform::memory
