// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace qk {

// Keys of an error's user-info dictionary.
inline constexpr char NSLocalizedDescriptionKey[] = "NSLocalizedDescription";                    ///< text
inline constexpr char NSLocalizedRecoverySuggestionErrorKey[] = "NSLocalizedRecoverySuggestion"; ///< text
inline constexpr char NSLocalizedRecoveryOptionsErrorKey[] = "NSLocalizedRecoveryOptions";       ///< array of texts
inline constexpr char NSRecoveryAttempterErrorKey[] = "NSRecoveryAttempter";                     ///< object

/// `NSError`: what went wrong, as a domain, a code within it and more by key. Threads: may be read anywhere.
class QK_EXPORT NSError : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `errorWithDomain:code:userInfo:`.
    [[nodiscard]] static std::shared_ptr<NSError> errorWithDomain(const NSString& domain, std::int64_t code,
                                                                  const NSDictionary& userInfo);

    [[nodiscard]] const NSString& domain() const noexcept { return domain_; }
    [[nodiscard]] std::int64_t code() const noexcept { return code_; }
    [[nodiscard]] const NSDictionary& userInfo() const noexcept { return userInfo_; }

    /// The text of `NSLocalizedDescriptionKey`, else one of domain and code.
    [[nodiscard]] NSString localizedDescription() const;

    /// Equal when domain, code and user info are.
    [[nodiscard]] bool isEqual(const Value& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    NSError(NSString domain, std::int64_t code, NSDictionary userInfo);

    NSString domain_;
    std::int64_t code_;
    NSDictionary userInfo_;
};

} // namespace qk
