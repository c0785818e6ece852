// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/services/NSFileManager.h"
#include "QKFoundation/platform/services/Services.h"

#include <memory>
#include <optional>

/// The standard folders of a given machine.
namespace qk::internal {

[[nodiscard]] NSString userPathForDirectory(const platform::Services& services, const NSFileManager& self,
                                            NSSearchPathDirectory directory, const NSString& defaultName);

[[nodiscard]] std::optional<NSString> displayNameForBundle(const platform::Services& services,
                                                           const std::shared_ptr<NSBundle>& bundle);
[[nodiscard]] std::optional<NSString> applicationSupportPath(const platform::Services& services,
                                                             const NSFileManager& self,
                                                             const std::shared_ptr<NSBundle>& bundle);
[[nodiscard]] std::optional<NSString> systemApplicationSupportPath(const platform::Services& services,
                                                                   const std::shared_ptr<NSBundle>& bundle);
[[nodiscard]] std::optional<NSString> cachesPath(const platform::Services& services, const NSFileManager& self);
[[nodiscard]] NSString downloadPath(const platform::Services& services);
[[nodiscard]] std::shared_ptr<NSBundle> appBundle(const platform::Services& services);

} // namespace qk::internal
