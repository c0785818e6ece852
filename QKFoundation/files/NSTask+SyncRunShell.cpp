// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSTask+SyncRunShell.h"
#include "QKFoundation/files/internal/Tasks.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <system_error>
#include <utility>
#include <variant>

namespace qk {

platform::TaskExit internal::runTask(const platform::Services& services, const platform::TaskRequest& request) {
    auto outcome = services.taskLauncher->run(request);
    if (const auto* failure = std::get_if<platform::TaskLaunchFailure>(&outcome)) {
        const std::string why = std::generic_category().message(failure->errorNumber);
        throw NSInvalidArgumentException("cannot launch " + request.launchPath + ": " + NSString::fromUTF8Lossy(why));
    }
    return std::get<platform::TaskExit>(std::move(outcome));
}

NSData internal::runCommandAtPath(const platform::Services& services, const NSString& path,
                                  const std::vector<NSString>& arguments) {
    platform::TaskRequest request;
    request.launchPath = path;
    request.arguments = arguments;
    request.standardOutput = platform::TaskStream::Collect;
    request.standardError = platform::TaskStream::Discard;
    return runTask(services, request).output;
}

NSData NSTask_SyncRunShell::runCommandAtPath(const NSString& path, const std::vector<NSString>& arguments) {
    return internal::runCommandAtPath(*platform::services(), path, arguments);
}

} // namespace qk
