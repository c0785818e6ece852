// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

namespace qk {

/// What a change dictionary tells, and when; options may be joined with `|`.
enum class NSKeyValueObservingOptions : std::uint32_t {
    None = 0,
    New = 1,     ///< `NSKeyValueObservingOptionNew`: the value afterwards
    Old = 2,     ///< `NSKeyValueObservingOptionOld`: the value before
    Initial = 4, ///< `NSKeyValueObservingOptionInitial`: one notification while the observer is added
    Prior = 8,   ///< `NSKeyValueObservingOptionPrior`: one more notification before each change
};

[[nodiscard]] constexpr NSKeyValueObservingOptions operator|(NSKeyValueObservingOptions left,
                                                             NSKeyValueObservingOptions right) noexcept {
    return static_cast<NSKeyValueObservingOptions>(static_cast<std::uint32_t>(left) |
                                                   static_cast<std::uint32_t>(right));
}
[[nodiscard]] constexpr bool hasOption(NSKeyValueObservingOptions options, NSKeyValueObservingOptions option) noexcept {
    return (static_cast<std::uint32_t>(options) & static_cast<std::uint32_t>(option)) != 0;
}

/// The kind of a change: `NSKeyValueChangeSetting` is that of every change of a whole value.
enum class NSKeyValueChange : std::uint64_t { Setting = 1, Insertion = 2, Removal = 3, Replacement = 4 };

// Keys of a change dictionary. A value that is nil is in it as the null marker.
inline constexpr char NSKeyValueChangeKindKey[] = "kind";                               ///< number, always there
inline constexpr char NSKeyValueChangeNewKey[] = "new";                                 ///< with the option New
inline constexpr char NSKeyValueChangeOldKey[] = "old";                                 ///< with the option Old
inline constexpr char NSKeyValueChangeNotificationIsPriorKey[] = "notificationIsPrior"; ///< true, before a change

} // namespace qk
