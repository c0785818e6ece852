// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxTaskLauncher.h"

#include "QKFoundation/platform/linux/ChildProcess.h"
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

namespace qk::platform {
namespace {

ChildStream childStream(TaskStream stream) {
    switch (stream) {
    case TaskStream::Inherit: return ChildStream::Inherit;
    case TaskStream::Collect: return ChildStream::Collect;
    case TaskStream::Discard: break;
    }
    return ChildStream::Discard;
}

// Nothing when a text has no representation.
std::optional<ChildRequest> childRequest(const TaskRequest& task) {
    ChildRequest request;
    std::optional<std::string> path = fileSystemRepresentation(task.launchPath);
    if (!path.has_value()) {
        return std::nullopt;
    }
    request.path = *std::move(path);
    request.arguments.reserve(task.arguments.size());
    for (const NSString& argument : task.arguments) {
        std::optional<std::string> bytes = fileSystemRepresentation(argument);
        if (!bytes.has_value()) {
            return std::nullopt;
        }
        request.arguments.push_back(*std::move(bytes));
    }
    if (task.currentDirectoryPath.has_value()) {
        request.workingDirectory = fileSystemRepresentation(*task.currentDirectoryPath);
        if (!request.workingDirectory.has_value()) {
            return std::nullopt;
        }
    }
    request.output = childStream(task.standardOutput);
    request.error = childStream(task.standardError);
    return request;
}

} // namespace

const std::string& LinuxTaskLauncher::programFor(const std::string& launchPath) const {
    const auto substitute = std::ranges::find(substitutes_, launchPath, &ProgramSubstitute::launchPath);
    if (substitute == substitutes_.end() || ::access(launchPath.c_str(), F_OK) == 0) {
        return launchPath;
    }
    return substitute->program;
}

std::variant<TaskLaunchFailure, TaskExit> LinuxTaskLauncher::run(const TaskRequest& request) {
    std::optional<ChildRequest> child = childRequest(request);
    if (!child.has_value() || child->error == ChildStream::Collect) {
        return TaskLaunchFailure{EINVAL};
    }
    child->path = programFor(child->path);
    std::variant<int, ChildExit> outcome = runChild(*child);
    if (const int* error = std::get_if<int>(&outcome); error != nullptr) {
        return TaskLaunchFailure{*error};
    }
    auto& ended = std::get<ChildExit>(outcome);
    const std::size_t length = ended.output.length();
    NSData output = length != 0 ? NSData::adoptingMalloc(ended.output.release(), length) : NSData();
    return TaskExit{ended.status, ended.signaled, std::move(output)};
}

} // namespace qk::platform
