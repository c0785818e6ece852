// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+ApplicationSupportPath.h"
#include "QKFoundation/files/internal/StandardPaths.h"

namespace qk {

using platform::services;
using enum NSSearchPathDirectory;
using enum NSSearchPathDomainMask;

namespace {

// `URLForDirectory:inDomain:appropriateForURL:create:error:`, whose path it is.
std::optional<NSString> madeFolder(const platform::Services& services, NSSearchPathDirectory directory,
                                   NSSearchPathDomainMask domain) {
    const auto paths = services.fileManager->searchPaths(directory, domain);
    if (paths.empty() || !services.fileManager->createDirectoryAtPath(paths.front(), true)) {
        return std::nullopt;
    }
    return paths.front();
}

} // namespace

std::optional<NSString> internal::displayNameForBundle(const platform::Services& services,
                                                       const std::shared_ptr<NSBundle>& bundle) {
    if (bundle == nullptr) {
        return std::nullopt;
    }
    if (const std::optional<Value> name = bundle->objectForInfoDictionaryKey("CFBundleDisplayName")) {
        return name->description();
    }
    // The extension goes from the name that is shown, which need not be that of the path.
    return services.fileManager->displayNameAtPath(bundle->bundlePath()).stringByDeletingPathExtension();
}

std::optional<NSString> internal::applicationSupportPath(const platform::Services& services, const NSFileManager& self,
                                                         const std::shared_ptr<NSBundle>& bundle) {
    const std::optional<NSString> name = displayNameForBundle(services, bundle);
    if (!name.has_value()) {
        return std::nullopt;
    }
    return userPathForDirectory(services, self, NSApplicationSupportDirectory, "Library/Application Support")
        .stringByAppendingPathComponent(*name);
}

std::optional<NSString> internal::systemApplicationSupportPath(const platform::Services& services,
                                                               const std::shared_ptr<NSBundle>& bundle) {
    const std::optional<NSString> name = displayNameForBundle(services, bundle);
    if (!name.has_value()) {
        return std::nullopt;
    }
    const auto folder = madeFolder(services, NSApplicationSupportDirectory, NSSystemDomainMask);
    return folder.has_value() ? std::optional(folder->stringByAppendingPathComponent(*name)) : std::nullopt;
}

namespace NSFileManager_ApplicationSupportPath {

std::optional<NSString> applicationSupportPathWithBundle(const NSFileManager& self,
                                                         const std::shared_ptr<NSBundle>& bundle) {
    return internal::applicationSupportPath(*services(), self, bundle);
}

std::optional<NSString> systemApplicationSupportPathWithBundle(const NSFileManager& /*self*/,
                                                               const std::shared_ptr<NSBundle>& bundle) {
    return internal::systemApplicationSupportPath(*services(), bundle);
}

std::optional<NSString> applicationSupportPath(const NSFileManager& self) {
    const auto machine = services();
    return internal::applicationSupportPath(*machine, self, NSBundle::mainBundle(*machine));
}

std::optional<NSString> systemApplicationSupportPath(const NSFileManager& /*self*/) {
    const auto machine = services();
    return internal::systemApplicationSupportPath(*machine, NSBundle::mainBundle(*machine));
}

std::optional<NSString> displayNameForBundle(const NSFileManager& /*self*/, const std::shared_ptr<NSBundle>& bundle) {
    return internal::displayNameForBundle(*services(), bundle);
}

} // namespace NSFileManager_ApplicationSupportPath
} // namespace qk
