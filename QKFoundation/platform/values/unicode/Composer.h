// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qk::unicode {

/// Composes a text from one boundary of composition to another. What lies between two boundaries is a segment.
class Composer {
public:
    enum class Extent {
        segment, ///< just one
        stretch, ///< so many that no more than a few at the end had nothing to compose
    };

    explicit Composer(std::u16string_view in) : in_{in} {}

    /// Appends the form C of what begins at `start`, which is the text's start or a boundary. Returns where it ends.
    std::size_t append(std::size_t start, Extent extent, std::u16string& out);

private:
    std::size_t appendAny(std::size_t start, std::u16string& out);
    void decompose(char32_t character);
    void sortMarks();
    void sortRun(std::size_t first, std::size_t last);
    void composeBuffer();

    std::u16string_view in_;
    // Characters with their combining classes above bit 24. Kept for their memory.
    std::vector<std::uint32_t> buffer_;
    std::vector<std::uint32_t> sorted_;
};

} // namespace qk::unicode
