// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Folders.h"

#include "QKFoundation/files/NSBundle+AppBundle.h"
#include "QKFoundation/files/NSFileManager+ApplicationSupportPath.h"
#include "QKFoundation/files/NSFileManager+CachesPath.h"
#include "QKFoundation/files/NSFileManager+DownloadPath.h"

namespace qk::info {

std::optional<Body> folders(const Surroundings& /*surroundings*/) {
    const NSFileManager& manager = *NSFileManager::defaultManager();
    const auto pathOf = [](const std::shared_ptr<NSBundle>& bundle) {
        return bundle != nullptr ? std::optional(bundle->bundlePath()) : std::nullopt;
    };
    return Facts{
        {"application_support", "Application data",
         textContent(NSFileManager_ApplicationSupportPath::applicationSupportPath(manager))},
        {"system_application_support", "Everybody's data",
         textContent(NSFileManager_ApplicationSupportPath::systemApplicationSupportPath(manager))},
        {"caches", "Caches", textContent(NSFileManager_CachesPath::cachesPath(manager))},
        {"downloads", "Downloads", textContent(NSFileManager_DownloadPath::downloadPath(manager))},
        {"main_bundle", "Main bundle", textContent(pathOf(NSBundle::mainBundle()))},
        {"app_bundle", "Application", textContent(pathOf(NSBundle_AppBundle::appBundle()))},
    };
}

} // namespace qk::info
