// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSTask+Zip.h"
#include "QKFoundation/files/internal/Tasks.h"

namespace qk {

std::optional<std::vector<NSString>> internal::unzipFileAtPath(const platform::Services& services,
                                                               const std::optional<NSString>& path,
                                                               const std::optional<NSString>& inDirectoryAtPath) {
    if (!path.has_value() || !inDirectoryAtPath.has_value()) {
        return std::nullopt;
    }
    services.fileManager->createDirectoryAtPath(*inDirectoryAtPath, true);
    platform::TaskRequest request;
    request.launchPath = "/usr/bin/unzip";
    request.arguments = {"-q", *path};
    request.currentDirectoryPath = inDirectoryAtPath;
    (void)runTask(services, request);
    return services.fileManager->contentsOfDirectoryAtPath(*inDirectoryAtPath);
}

std::optional<NSString> internal::zipDirectoryAtPath(const platform::Services& services,
                                                     const std::optional<NSString>& path) {
    if (!path.has_value()) {
        return std::nullopt;
    }
    const std::optional<NSString> archive = path->stringByAppendingPathExtension("zip");
    if (!archive.has_value()) { // "" and "/" cannot take an extension: there is no archive to name
        return std::nullopt;
    }
    platform::TaskRequest request;
    request.launchPath = "/usr/bin/zip";
    request.arguments = {"-r", "-j", *archive, *path, *path}; // the folder is named twice: each file goes in once
    request.standardOutput = platform::TaskStream::Discard;
    request.standardError = platform::TaskStream::Discard;
    const platform::TaskExit exit = runTask(services, request);
    return exit.terminationStatus == 0 && !exit.uncaughtSignal ? archive : std::nullopt;
}

std::optional<std::vector<NSString>> NSTask_Zip::unzipFileAtPath(const std::optional<NSString>& path,
                                                                 const std::optional<NSString>& inDirectoryAtPath) {
    return internal::unzipFileAtPath(*platform::services(), path, inDirectoryAtPath);
}

std::optional<std::vector<NSString>> NSTask_Zip::unzipFileAtURL(const std::optional<NSURL>& url,
                                                                const std::optional<NSURL>& inDirectoryAtURL) {
    const auto pathOf = [](const std::optional<NSURL>& of) { return of.has_value() ? of->path() : std::nullopt; };
    return unzipFileAtPath(pathOf(url), pathOf(inDirectoryAtURL));
}

std::optional<NSString> NSTask_Zip::zipDirectoryAtPath(const std::optional<NSString>& path) {
    return internal::zipDirectoryAtPath(*platform::services(), path);
}

} // namespace qk
