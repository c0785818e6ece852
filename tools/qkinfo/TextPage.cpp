// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/TextPage.h"

#include "tools/qkinfo/DisplayText.h"

#include <algorithm>

namespace qk::info {

namespace {

constexpr std::string_view kPlain = "\x1b[0m";

} // namespace

void TextPage::startSection(std::string_view title) {
    if (!text_.empty()) {
        text_ += '\n';
    }
    appendColored(displayText(title), kTitleColor);
    text_ += '\n';
}

void TextPage::appendRow(const std::vector<Cell>& cells, std::size_t indent) {
    std::size_t height = 0;
    for (const Cell& cell : cells) {
        height = std::max(height, cell.lines.size());
    }
    for (std::size_t line = 0; line < height; ++line) {
        appendLine(cells, line, indent);
    }
}

void TextPage::appendSentence(std::string_view sentence, std::string_view color) {
    const std::size_t width = std::max(style_.width, kIndent + kNarrowestValue) - kIndent;
    appendRow({Cell{wrapped(displayText(sentence), width), width, color}});
}

void TextPage::appendLine(const std::vector<Cell>& cells, std::size_t line, std::size_t indent) {
    std::size_t blanks = indent;
    for (const Cell& cell : cells) {
        if (line >= cell.lines.size() || cell.lines[line].empty()) {
            blanks += cell.width + kGap;
            continue;
        }
        text_.append(blanks, ' ');
        appendColored(cell.lines[line], cell.color);
        const std::size_t width = displayWidth(cell.lines[line]);
        blanks = kGap + (cell.width > width ? cell.width - width : 0);
    }
    text_ += '\n';
}

void TextPage::appendColored(const std::wstring& text, std::string_view color) {
    const bool colored = style_.color && !color.empty();
    text_.append(colored ? color : std::string_view()).append(displayBytes(text));
    text_.append(colored ? kPlain : std::string_view());
}

} // namespace qk::info
