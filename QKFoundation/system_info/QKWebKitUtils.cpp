// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKWebKitUtils.h"

#include "QKFoundation/system_info/internal/WebKitVersions.h"

namespace qk {

using platform::services;

NSString internal::embeddedWebKitVersion(const platform::Services& services) {
    const std::optional<NSString> path = services.processInfo->bundlePathForClass("WebView");
    return path.has_value() ? QKWebKitUtils::bundleVersionFromBundle(NSBundle::bundleWithPath(*path, services))
                            : NSString();
}

NSString internal::safariWebKitVersion(const platform::Services& services) {
    return QKWebKitUtils::bundleVersionFromBundle(NSBundle::bundleWithPath("/Applications/Safari.app", services));
}

NSString QKWebKitUtils::embeddedWebKitVersion() {
    return internal::embeddedWebKitVersion(*services());
}

NSString QKWebKitUtils::safariWebKitVersion() {
    return internal::safariWebKitVersion(*services());
}

NSString QKWebKitUtils::bundleVersionFromBundle(const std::shared_ptr<NSBundle>& bundle) {
    if (bundle == nullptr) {
        return {};
    }
    const NSDictionary list = bundle->infoDictionary();
    const Value* version = list.objectForKey("CFBundleVersion");
    return version != nullptr ? version->description() : NSString();
}

} // namespace qk
