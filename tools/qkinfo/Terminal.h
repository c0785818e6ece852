// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace qk::info {

/// What a stream is connected to.
struct Terminal {
    bool isTerminal = false;
    std::size_t width = 80;      ///< columns; 80 for what is no terminal, or does not tell
    bool takesSequences = false; ///< whether it understands escape sequences: a terminal that is not "dumb"
    std::size_t height = 24;     ///< lines; 24 for what is no terminal, or does not tell
};

/// Looks at the descriptor `fd`, and at TERM of the environment.
[[nodiscard]] Terminal terminalAt(int fd);

enum class ColorChoice { Auto, Always, Never };

/// Whether to write colour. `noColor` is the environment's NO_COLOR, which counts when it is not empty.
[[nodiscard]] bool usesColor(ColorChoice choice, const Terminal& output, const char* noColor);

} // namespace qk::info
