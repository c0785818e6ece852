// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace qk::info {

/// Puts something that cannot be written to in the place of each standard stream that is closed, so that no file that
/// is opened later becomes one by accident.
void occupyStandardStreams();

/// Writes all of `text` to the descriptor `fd`. 0, else the number of the error. Waits for a descriptor that is not
/// ready.
[[nodiscard]] int writeAll(int fd, std::string_view text);

} // namespace qk::info
