// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qk::unicode {

/// Composes one segment after the other of a text: the characters from one boundary of composition up to the next.
class Composer {
public:
    explicit Composer(std::u16string_view in) : in_{in} {}

    /// Appends the form C of the segment that begins at `start`, which is the text's start or a boundary. Returns its
    /// end.
    std::size_t appendSegment(std::size_t start, std::u16string& out);

private:
    struct Segment;

    bool appendOrdered(Segment& segment, std::u16string& out);
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
