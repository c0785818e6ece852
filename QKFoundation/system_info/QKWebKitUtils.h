// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSBundle.h"

#include <memory>

namespace qk {

/// `QKWebKitUtils`: versions of the system's web engine. Linux: the engine comes in no bundle, so both are "". Threads:
/// any, at the same time.
class QK_EXPORT QKWebKitUtils {
public:
    QKWebKitUtils() = delete;

    /// `embeddedWebKitVersion`. The version of the bundle that has the class `WebView`; "" when there is none.
    [[nodiscard]] static NSString embeddedWebKitVersion();

    /// `safariWebKitVersion`. The version of the application at "/Applications/Safari.app"; "" when there is none.
    [[nodiscard]] static NSString safariWebKitVersion();

    /// `bundleVersionFromBundle:`. "CFBundleVersion" of the bundle's information list; "" when the bundle is null or
    /// the list has no such key.
    [[nodiscard]] static NSString bundleVersionFromBundle(const std::shared_ptr<NSBundle>& bundle);
};

} // namespace qk
