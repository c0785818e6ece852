// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSBundle.h"

#include <memory>

/// `NSBundle(AppBundle)`: the application that the running code belongs to.
namespace qk::NSBundle_AppBundle {

/// `appBundle`. The bundle of the nearest folder with the extension "app", exactly so, from the main bundle's upwards.
/// Null when that folder is gone, and when the main bundle's path is not known or not absolute. Deliberate: a program
/// that lies in no such folder gets the bundle of "/". Threads: any, at the same time.
[[nodiscard]] QK_EXPORT std::shared_ptr<NSBundle> appBundle();

} // namespace qk::NSBundle_AppBundle
