// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace qk {

/// The null marker: stands for a missing value inside a collection. It is a value; a missing key is not one.
struct NSNull {
    [[nodiscard]] friend constexpr bool operator==(NSNull, NSNull) noexcept { return true; }
};

} // namespace qk
