// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qk {

/// A set of UTF-16 units. A character outside of the Basic Multilingual Plane counts as its two surrogates.
/// Threads: may be read, copied and destroyed anywhere at the same time.
class QK_EXPORT NSCharacterSet {
public:
    /// The empty set.
    NSCharacterSet() = default;

    /// `characterSetWithCharactersInString:`. The units of `string`.
    [[nodiscard]] static NSCharacterSet characterSetWithCharactersInString(const NSString& string);

    /// `invertedSet`. All units that this set lacks.
    [[nodiscard]] NSCharacterSet invertedSet() const;

    /// `characterIsMember:`.
    [[nodiscard]] bool characterIsMember(char16_t unit) const noexcept;

    /// Equal when both hold the same units.
    QK_EXPORT friend bool operator==(const NSCharacterSet& left, const NSCharacterSet& right) noexcept;

private:
    std::array<std::uint64_t, 2> ascii_{};               // a bit per unit below U+0080, as they are in the set
    std::shared_ptr<const std::u16string> listedOthers_; // ascending; null when none is listed
    bool othersInverted_ = false;                        // whether the set holds the others that are not listed
};

/// `rangeOfCharacterFromSet:`. The index of the first unit of `string` that is in `set`; nothing when none is.
[[nodiscard]] QK_EXPORT std::optional<std::size_t> rangeOfCharacterFromSet(const NSString& string,
                                                                           const NSCharacterSet& set);

/// `componentsSeparatedByCharactersInSet:`. The pieces between the units that are in `set`, empty ones included.
[[nodiscard]] QK_EXPORT std::vector<NSString> componentsSeparatedByCharactersInSet(const NSString& string,
                                                                                   const NSCharacterSet& set);

/// The units of `string` that are not in `set`, in order: what the components of that set make when joined with "".
[[nodiscard]] QK_EXPORT NSString stringByRemovingCharactersInSet(const NSString& string, const NSCharacterSet& set);

} // namespace qk
