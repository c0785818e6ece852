// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/values/Value.h"

#include <optional>

/// The helpers that ask the system, about a given machine.
namespace qk::internal {

[[nodiscard]] bool openURLString(const platform::Services& services, const NSString& string);
[[nodiscard]] bool openAsURL(const platform::Services& services, const NSString& string);

[[nodiscard]] bool conformsToUTIType(const platform::Services& services, const NSString& type,
                                     const NSString& conformsTo);

[[nodiscard]] std::optional<NSString> plistRepresentation(const platform::Services& services, const NSArray& array);
[[nodiscard]] std::optional<NSArray> arrayForPlistRepresentation(const platform::Services& services,
                                                                 const NSString& string);
[[nodiscard]] std::optional<Value> propertyListAtPath(const platform::Services& services, const NSString& path,
                                                      platform::NSPropertyListMutabilityOptions options);

[[nodiscard]] NSString abbreviationAndOffset(const platform::Services& services, const NSTimeZone& zone);

[[nodiscard]] std::optional<NSString> sha1(const platform::Services& services, const NSData& data);

} // namespace qk::internal
