// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxLaunchServices.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/Portal.h"

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace qk::platform {
namespace {

std::optional<std::string> sessionBusAddress(const Variables& variables) {
    std::optional<std::string> address = filledVariable(variables, "DBUS_SESSION_BUS_ADDRESS");
    if (!address.has_value()) {
        const std::optional<std::string> folder = filledVariable(variables, "XDG_RUNTIME_DIR");
        if (!folder.has_value() || !folder->starts_with('/')) {
            return std::nullopt;
        }
        address = "unix:path=" + *folder + "/bus";
    }
    // Other kinds of addresses start programs or lead to other machines.
    return address->starts_with("unix:") ? address : std::nullopt;
}

PortalAnswer askPortal(const Variables& variables, const NSURL& url) {
    const std::optional<std::string> address = sessionBusAddress(variables);
    if (!address.has_value()) {
        return PortalAnswer::Absent;
    }
    if (!url.isFileURL()) {
        return openURLWithPortal(*address, url.absoluteString().utf8Lossy());
    }
    const std::optional<std::string> path = fileSystemRepresentation(url.path().value_or(NSString()));
    return path.has_value() ? openFileWithPortal(*address, *path) : PortalAnswer::Absent;
}

} // namespace

std::int32_t LinuxLaunchServices::openURL(const NSURL& url) {
    if (!url.scheme().has_value()) {
        return kLSApplicationNotFoundErr;
    }
    const PortalAnswer answer = askPortal(variables_, url);
    const bool opened =
        answer == PortalAnswer::Opened || (answer == PortalAnswer::Absent && openWithProgram(url.absoluteString()));
    return opened ? noErr : kLSApplicationNotFoundErr;
}

bool LinuxLaunchServices::openWithProgram(const NSString& url) const {
    std::vector<NSString> arguments{url};
    std::string program = programNamed("xdg-open");
    if (program.empty()) {
        program = programNamed("gio");
        arguments = {"open", url};
    }
    if (program.empty()) {
        return false;
    }
    TaskRequest request;
    request.launchPath = stringWithFileSystemRepresentation(program);
    request.arguments = std::move(arguments);
    request.standardOutput = TaskStream::Discard;
    request.standardError = TaskStream::Discard;
    const auto outcome = launcher_->run(request);
    const auto* exit = std::get_if<TaskExit>(&outcome);
    return exit != nullptr && !exit->uncaughtSignal && exit->terminationStatus == 0;
}

// Its path; "" when PATH does not lead to it.
std::string LinuxLaunchServices::programNamed(const std::string& name) const {
    const std::string path = filledVariable(variables_, "PATH").value_or("/usr/local/bin:/usr/bin:/bin");
    std::string_view folders = path;
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        std::string program = std::string(folder) + "/" + name;
        if (folder.starts_with('/') && ::access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    return {};
}

} // namespace qk::platform
