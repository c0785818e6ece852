// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/TextRenderer.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/Quantities.h"
#include "tools/qkinfo/TextPage.h"

#include <algorithm>
#include <numeric>

namespace qk::info {

namespace {

constexpr std::size_t kNarrowestColumn = 8;

// Table cells are narrow.
constexpr std::string_view kAbsentCell = "not reported";

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
    std::string operator()(BitsPerSecond speed) const { return speedText(speed); }
    std::string operator()(const Names& names) const { return namesText(names); }
    std::string operator()(const Lines& lines) const { return namesText(lines.texts); }
    std::string operator()(const Choice& choice) const { return std::string(choice.value ? choice.yes : choice.no); }
    std::string operator()(const Path& path) const { return path.text; }
    std::string operator()(Moment moment) const { return bootTimeText(moment, style.now); }
    std::string operator()(Date date) const {
        return inTable ? localMinuteText(date.moment) : localTimeText(date.moment);
    }
};

const Path* pathIn(const Fact& fact) {
    return fact.content.has_value() ? std::get_if<Path>(&*fact.content) : nullptr;
}

std::wstring textOf(const Fact& fact, const TextStyle& style, bool inTable) {
    if (const Path* path = pathIn(fact)) {
        return displayExact(path->text);
    }
    const std::string_view absent = inTable ? kAbsentCell : kAbsentText;
    return displayText(fact.content.has_value() ? std::visit(ContentText{style, inTable}, *fact.content)
                                                : std::string(absent));
}

std::vector<std::wstring> linesOf(const Fact& fact, const TextStyle& style, std::size_t width) {
    const Lines* lines = fact.content.has_value() ? std::get_if<Lines>(&*fact.content) : nullptr;
    if (lines == nullptr || lines->texts.empty()) {
        return wrapped(textOf(fact, style, false), width);
    }
    std::vector<std::wstring> all;
    for (const std::string& text : lines->texts) {
        std::ranges::move(wrapped(displayText(text), width), std::back_inserter(all));
    }
    return all;
}

bool isShown(const Fact& fact) {
    return fact.audience != Audience::Programs;
}

std::string_view valueColor(const Fact& fact) {
    return fact.content.has_value() ? std::string_view() : kAbsentColor;
}

std::size_t widestLabel(std::span<const Fact> facts) {
    std::size_t widest = 0;
    for (const Fact& fact : facts) {
        widest = std::max(widest, isShown(fact) ? displayWidth(displayText(fact.label)) : 0);
    }
    return widest;
}

std::size_t widestLabel(std::span<const Section> sections) {
    std::size_t widest = 0;
    for (const Section& section : sections) {
        if (const Facts* facts = section.body.has_value() ? std::get_if<Facts>(&*section.body) : nullptr) {
            widest = std::max(widest, widestLabel(std::span<const Fact>(*facts)));
        }
    }
    return widest;
}

void appendFacts(TextPage& page, std::span<const Fact> facts, std::size_t labelWidth, std::size_t indent = kIndent) {
    const std::size_t taken = indent + labelWidth + kGap;
    const std::size_t width = std::max(page.style().width, taken + kNarrowestValue) - taken;
    for (const Fact& fact : facts) {
        if (isShown(fact)) {
            page.appendRow({Cell{{displayText(fact.label)}, labelWidth, kLabelColor},
                            Cell{linesOf(fact, page.style(), width), width, valueColor(fact)}},
                           indent);
        }
    }
}

void appendBlocks(TextPage& page, std::span<const Facts> records) {
    std::size_t labelWidth = 0;
    for (const Facts& record : records) {
        labelWidth = std::max(labelWidth, widestLabel(std::span(record).subspan(1)));
    }
    const std::size_t width = std::max(page.style().width, kIndent + kNarrowestValue) - kIndent;
    for (const Facts& record : records) {
        page.appendRow({Cell{wrapped(textOf(record.front(), page.style(), false), width), width, kTitleColor}});
        appendFacts(page, std::span(record).subspan(1), labelWidth, kIndent + kGap);
        page.appendEmptyLine();
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

struct TableCell {
    std::wstring text;
    bool isPath = false;
};
using TableRow = std::vector<TableCell>;

std::vector<TableRow> rowsOf(std::span<const Facts> records, const TextStyle& style) {
    std::vector<TableRow> rows(1);
    for (const Fact& fact : records.front()) {
        if (isShown(fact)) {
            rows.front().push_back({displayText(fact.label)});
        }
    }
    for (const Facts& record : records) {
        TableRow& row = rows.emplace_back();
        for (const Fact& fact : record) {
            if (isShown(fact)) {
                row.push_back({textOf(fact, style, true), pathIn(fact) != nullptr});
            }
        }
    }
    return rows;
}

std::vector<std::size_t> widthsOf(const std::vector<TableRow>& rows, const TextStyle& style) {
    std::vector<std::size_t> widths(rows.front().size());
    bool isWide = false;
    for (const TableRow& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(displayWidth(row[column].text), widths[column]);
            isWide = isWide || (row[column].isPath && style.paths == PathStyle::Whole);
        }
    }
    if (!isWide) {
        shrinkToFit(widths, std::max(style.width, kIndent) - kIndent);
    }
    return widths;
}

void appendTable(TextPage& page, std::span<const Facts> records) {
    const std::vector<TableRow> rows = rowsOf(records, page.style());
    const std::vector<std::size_t> widths = widthsOf(rows, page.style());
    for (const TableRow& row : rows) {
        std::vector<Cell> cells;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string_view color = &row == &rows.front() ? kLabelColor : std::string_view();
            const std::size_t width = widths[column];
            const bool isElided = row[column].isPath && page.style().paths == PathStyle::Elided;
            cells.push_back(
                Cell{isElided ? std::vector{elided(row[column].text, width)} : wrapped(row[column].text, width), width,
                     color});
        }
        page.appendRow(cells);
    }
}

void appendList(TextPage& page, const List& list, std::string_view command) {
    if (list.records.empty()) {
        page.appendSentence(list.whenEmpty, {});
        return;
    }
    const std::size_t count = list.records.size();
    const std::size_t shown = std::min(count, list.mostForPeople);
    const auto records = std::span(list.records).first(shown);
    list.form == ListForm::Blocks ? appendBlocks(page, records) : appendTable(page, records);
    if (shown < count) {
        page.appendSentence("and " + std::to_string(count - shown) + " more: qkinfo " + std::string(command), {});
        return;
    }
    page.appendSentence(std::to_string(count) + " " + std::string(count == 1 ? list.one : list.many) + ".", {});
}

} // namespace

std::string renderText(std::span<const Section> sections, const TextStyle& style) {
    TextPage page(style);
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
