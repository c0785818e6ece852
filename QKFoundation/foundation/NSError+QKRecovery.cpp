// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSError+QKRecovery.h"
#include "QKFoundation/platform/objects/NSException.h"

namespace qk::NSError_QKRecovery {
namespace {

constexpr char kDomain[] = "com.qkfoundation.qkerror.recoverable";

} // namespace

std::shared_ptr<NSError> errorWithLocalizedDescription(const std::optional<NSString>& description,
                                                       const std::optional<NSString>& localizedRecoverySuggestion,
                                                       const std::optional<NSArray>& localizedRecoveryOptions,
                                                       const std::shared_ptr<NSObject>& errorRecoverer) {
    if (!description || !localizedRecoverySuggestion || !localizedRecoveryOptions || errorRecoverer == nullptr) {
        throw NSInvalidArgumentException("an entry of the user info of a recoverable error is missing");
    }
    return NSError::errorWithDomain(kDomain, 0,
                                    {{NSLocalizedDescriptionKey, *description},
                                     {NSLocalizedRecoverySuggestionErrorKey, *localizedRecoverySuggestion},
                                     {NSRecoveryAttempterErrorKey, errorRecoverer},
                                     {NSLocalizedRecoveryOptionsErrorKey, *localizedRecoveryOptions}});
}

} // namespace qk::NSError_QKRecovery
