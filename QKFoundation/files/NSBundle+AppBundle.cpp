// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSBundle+AppBundle.h"
#include "QKFoundation/files/internal/StandardPaths.h"

namespace qk {

std::shared_ptr<NSBundle> internal::appBundle(const platform::Services& services) {
    NSString path = services.processInfo->mainBundlePath();
    while (!path.isEmpty() && path != "/" && path.pathExtension() != "app") {
        path = path.stringByDeletingLastPathComponent();
    }
    return path.isEmpty() ? nullptr : NSBundle::bundleWithPath(path, services);
}

std::shared_ptr<NSBundle> NSBundle_AppBundle::appBundle() {
    return internal::appBundle(*platform::services());
}

} // namespace qk
