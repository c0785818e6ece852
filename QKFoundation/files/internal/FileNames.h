// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/NSFileManager.h"
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <optional>

/// Names of files, and what is attached to them, on a given machine.
namespace qk::internal {

/// `URLByAppendingPathComponent:`. Nothing for a component with a lone surrogate; `url` itself when it has no path.
[[nodiscard]] std::optional<NSURL> URLByAppendingPathComponent(const NSURL& url, const NSString& component);

/// `URLByAppendingPathExtension:`. Nothing for an extension with a lone surrogate; `url` itself when it has no path, or
/// no name to append to.
[[nodiscard]] std::optional<NSURL> URLByAppendingPathExtension(const NSURL& url, const NSString& extension);

[[nodiscard]] std::optional<NSURL> availableFileURLWithName(const platform::Services& services,
                                                            const NSFileManager& self, const NSString& name,
                                                            const NSString& pathExtension, const NSURL& atURL);

void showProgress(const platform::Services& services, double progress, const NSURL& atURL);

[[nodiscard]] std::optional<NSString> extendedAttributeForName(const platform::Services& services, const NSString& name,
                                                               const NSString& atPath);

} // namespace qk::internal
