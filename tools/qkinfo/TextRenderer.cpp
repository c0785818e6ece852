// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/TextRenderer.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/Quantities.h"

#include <algorithm>
#include <numeric>

namespace qk::info {

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowestValue = 24;
constexpr std::size_t kNarrowestColumn = 8;

// Table cells are narrow.
constexpr std::string_view kAbsentCell = "not reported";

constexpr std::string_view kTitleColor = "\x1b[1m";
constexpr std::string_view kLabelColor = "\x1b[36m";
constexpr std::string_view kAbsentColor = "\x1b[2m";
constexpr std::string_view kPlain = "\x1b[0m";

struct ContentText {
    const TextStyle& style;
    bool inTable; // where there is no room for a number in two ways

    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(Count count) const { return std::to_string(count.number); }
    std::string operator()(Bytes bytes) const { return inTable ? sizeText(bytes) : bytesText(bytes); }
    std::string operator()(Megahertz frequency) const { return frequencyText(frequency); }
    std::string operator()(Percent percent) const { return percentText(percent); }
    std::string operator()(Milliseconds duration) const { return millisecondsText(duration); }
    std::string operator()(const Names& names) const { return namesText(names); }
    std::string operator()(Moment moment) const { return bootTimeText(moment, style.now); }
};

std::wstring textOf(const Fact& fact, const TextStyle& style) {
    return displayText(fact.content.has_value() ? std::visit(ContentText{style, false}, *fact.content)
                                                : std::string(kAbsentText));
}

std::wstring cellTextOf(const Fact& fact, const TextStyle& style) {
    return displayText(fact.content.has_value() ? std::visit(ContentText{style, true}, *fact.content)
                                                : std::string(kAbsentCell));
}

/// A cell that is broken into lines, in a column of a certain width.
struct Cell {
    std::vector<std::wstring> lines;
    std::size_t width;
    std::string_view color;
};

class Page {
public:
    explicit Page(const TextStyle& style) : style_(style) {}

    [[nodiscard]] const TextStyle& style() const { return style_; }
    [[nodiscard]] std::string text() && { return std::move(text_); }

    void startSection(std::string_view title) {
        if (!text_.empty()) {
            text_ += '\n';
        }
        appendColored(displayText(title), kTitleColor);
        text_ += '\n';
    }

    /// One row of cells side by side, as high as the highest of them. Nothing is padded behind the last text of a line.
    void appendRow(const std::vector<Cell>& cells) {
        std::size_t height = 0;
        for (const Cell& cell : cells) {
            height = std::max(height, cell.lines.size());
        }
        for (std::size_t line = 0; line < height; ++line) {
            appendLine(cells, line);
        }
    }

    void appendSentence(std::string_view sentence, std::string_view color) {
        const std::size_t width = std::max(style_.width, kIndent + kNarrowestValue) - kIndent;
        appendRow({Cell{wrapped(displayText(sentence), width), width, color}});
    }

private:
    void appendLine(const std::vector<Cell>& cells, std::size_t line) {
        std::size_t blanks = kIndent;
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

    void appendColored(const std::wstring& text, std::string_view color) {
        const bool colored = style_.color && !color.empty();
        text_.append(colored ? color : std::string_view()).append(displayBytes(text));
        text_.append(colored ? kPlain : std::string_view());
    }

    const TextStyle& style_;
    std::string text_;
};

bool isShown(const Fact& fact) {
    return fact.audience != Audience::Programs;
}

std::string_view valueColor(const Fact& fact) {
    return fact.content.has_value() ? std::string_view() : kAbsentColor;
}

std::size_t widestLabel(std::span<const Section> sections) {
    std::size_t widest = 0;
    for (const Section& section : sections) {
        const Facts* facts = section.body.has_value() ? std::get_if<Facts>(&*section.body) : nullptr;
        if (facts == nullptr) {
            continue;
        }
        for (const Fact& fact : *facts) {
            widest = std::max(widest, displayWidth(displayText(fact.label)));
        }
    }
    return widest;
}

void appendFacts(Page& page, const Facts& facts, std::size_t labelWidth) {
    const std::size_t taken = kIndent + labelWidth + kGap;
    const std::size_t width = std::max(page.style().width, taken + kNarrowestValue) - taken;
    for (const Fact& fact : facts) {
        if (isShown(fact)) {
            page.appendRow({Cell{{displayText(fact.label)}, labelWidth, kLabelColor},
                            Cell{wrapped(textOf(fact, page.style()), width), width, valueColor(fact)}});
        }
    }
}

/// Takes columns from the widest until the row fits, or until all are so narrow that it cannot.
void shrinkToFit(std::vector<std::size_t>& widths, std::size_t available) {
    std::size_t total = std::accumulate(widths.begin(), widths.end(), kGap * (widths.size() - 1));
    while (total > available) {
        const auto widest = std::ranges::max_element(widths);
        if (*widest <= kNarrowestColumn) {
            return;
        }
        --*widest;
        --total;
    }
}

void appendTable(Page& page, std::span<const Facts> records) {
    std::vector<std::vector<std::wstring>> rows(1);
    for (const Fact& fact : records.front()) {
        if (isShown(fact)) {
            rows.front().push_back(displayText(fact.label));
        }
    }
    for (const Facts& record : records) {
        auto& row = rows.emplace_back();
        for (const Fact& fact : record) {
            if (isShown(fact)) {
                row.push_back(cellTextOf(fact, page.style()));
            }
        }
    }
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows) {
        std::ranges::transform(row, widths, widths.begin(), [](const std::wstring& text, std::size_t width) {
            return std::max(displayWidth(text), width);
        });
    }
    shrinkToFit(widths, std::max(page.style().width, kIndent) - kIndent);
    for (const auto& row : rows) {
        std::vector<Cell> cells;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string_view color = &row == &rows.front() ? kLabelColor : std::string_view();
            cells.push_back(Cell{wrapped(row[column], widths[column]), widths[column], color});
        }
        page.appendRow(cells);
    }
}

void appendList(Page& page, const List& list, std::string_view command) {
    if (list.records.empty()) {
        page.appendSentence(list.whenEmpty, {});
        return;
    }
    const std::size_t count = list.records.size();
    const std::size_t shown = std::min(count, list.mostForPeople);
    appendTable(page, std::span(list.records).first(shown));
    if (shown < count) {
        page.appendSentence("and " + std::to_string(count - shown) + " more: qkinfo " + std::string(command), {});
        return;
    }
    page.appendSentence(std::to_string(count) + " " + std::string(count == 1 ? list.one : list.many) + ".", {});
}

} // namespace

std::string renderText(std::span<const Section> sections, const TextStyle& style) {
    Page page(style);
    const std::size_t labelWidth = widestLabel(sections);
    for (const Section& section : sections) {
        page.startSection(section.title);
        if (!section.body.has_value()) {
            page.appendSentence(kAbsentText, kAbsentColor);
        } else if (const Facts* facts = std::get_if<Facts>(&*section.body)) {
            appendFacts(page, *facts, labelWidth);
        } else {
            appendList(page, std::get<List>(*section.body), section.key);
        }
    }
    return std::move(page).text();
}

} // namespace qk::info
