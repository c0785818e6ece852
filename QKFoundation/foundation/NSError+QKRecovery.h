// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSError.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <memory>
#include <optional>

/// `NSError(QKRecovery)`: errors that a user may recover from.
///
/// Threads: any, at the same time.
namespace qk::NSError_QKRecovery {

/// `errorWithLocalizedDescription:localizedRecoverySuggestion:localizedRecoveryOptions:errorRecoverer:`. An error of
/// the domain "com.qkfoundation.qkerror.recoverable" and the code 0. Its user info has four entries: what went wrong,
/// what may be done, the titles of the choices (texts), and the object that carries a choice out, which the error
/// retains. Raises `NSInvalidArgumentException` when one of the four is nothing.
[[nodiscard]] QK_EXPORT std::shared_ptr<NSError> errorWithLocalizedDescription(
    const std::optional<NSString>& description, const std::optional<NSString>& localizedRecoverySuggestion,
    const std::optional<NSArray>& localizedRecoveryOptions, const std::shared_ptr<NSObject>& errorRecoverer);

} // namespace qk::NSError_QKRecovery
