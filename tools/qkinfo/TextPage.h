// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/TextRenderer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::info {

/// Escape sequences of the parts of a page.
inline constexpr std::string_view kTitleColor = "\x1b[1m";
inline constexpr std::string_view kLabelColor = "\x1b[36m";
inline constexpr std::string_view kAbsentColor = "\x1b[2m";

/// The columns that stand before a row, and between two cells.
inline constexpr std::size_t kIndent = 2;
inline constexpr std::size_t kGap = 2;

/// A cell that is broken into lines, in a column of a certain width.
struct Cell {
    std::vector<std::wstring> lines;
    std::size_t width;
    std::string_view color;
};

/// A text that grows line by line. `style` outlives it.
class TextPage {
public:
    explicit TextPage(const TextStyle& style) : style_(style) {}

    [[nodiscard]] const TextStyle& style() const { return style_; }
    [[nodiscard]] std::string text() && { return std::move(text_); }

    /// A title, with an empty line between it and what is there already.
    void startSection(std::string_view title);

    /// One row of cells side by side, as high as the highest of them. Nothing is padded behind the last text of a line.
    void appendRow(const std::vector<Cell>& cells, std::size_t indent = kIndent);

    void appendSentence(std::string_view sentence, std::string_view color);

    void appendEmptyLine() { text_ += '\n'; }

private:
    void appendLine(const std::vector<Cell>& cells, std::size_t line, std::size_t indent);
    void appendColored(const std::wstring& text, std::string_view color);

    const TextStyle& style_;
    std::string text_;
};

/// The columns that a value has at least, however narrow the page is.
inline constexpr std::size_t kNarrowestValue = 24;

} // namespace qk::info
