// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace qk::internal {

/// `units` with every letter as its lower-case one, character by character (Unicode's simple mapping: no letter becomes
/// two, and none looks at its neighbours). Lone surrogates stay.
[[nodiscard]] std::u16string lowerCased(std::u16string_view units);

} // namespace qk::internal
