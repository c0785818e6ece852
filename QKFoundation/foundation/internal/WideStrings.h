// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cwchar>
#include <string>
#include <string_view>

namespace qk::internal {

/// The elements before the first zero element; all when there is none.
[[nodiscard]] inline std::wstring_view upToFirstNul(const std::wstring& wide) {
    return {wide.data(), std::wcslen(wide.c_str())};
}

} // namespace qk::internal
