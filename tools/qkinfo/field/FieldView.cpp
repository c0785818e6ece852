// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldView.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/field/FieldCells.h"

#include <algorithm>
#include <vector>

namespace qk::info {

namespace {

constexpr std::size_t kLeastRoom = 8; // columns of text beside a title

constexpr std::string_view kInverse = "\x1b[7m";
constexpr std::string_view kNotInverse = "\x1b[27m";
constexpr std::string_view kClearRest = "\x1b[K";
constexpr std::string_view kClearBelow = "\x1b[J";

std::size_t roomBeside(std::wstring_view title, std::size_t columns) {
    const std::size_t taken = displayWidth(title) + 1;
    return columns > taken ? columns - taken : 0;
}

bool isSelected(const FieldCell& cell, NSRange selection) {
    return cell.units.location >= selection.location && cell.units.location < selection.location + selection.length;
}

std::size_t endOf(const FieldCell& cell) {
    return cell.units.location + cell.units.length;
}

} // namespace

FieldView::FieldView(std::string_view title) : title_(displayText(title) + L": ") {}

std::wstring_view FieldView::titleIn(std::size_t columns) const {
    return roomBeside(title_, columns) >= kLeastRoom ? std::wstring_view(title_) : std::wstring_view();
}

// Scrolls as little as shows the caret, and leaves no room unused that text could take.
void FieldView::scrollTo(const FieldEditor& editor, std::size_t room) {
    const std::vector<FieldCell> cells = fieldCells(editor.text());
    const auto startWithin = [&](std::size_t end) {
        std::size_t columns = 0;
        std::size_t start = end;
        for (auto cell = cells.rbegin(); cell != cells.rend(); ++cell) {
            if (endOf(*cell) > end) {
                continue;
            }
            columns += cell->columns;
            if (columns > room) {
                break;
            }
            start = cell->units.location;
        }
        return start;
    };
    start_ = std::clamp(start_, startWithin(editor.caret()), editor.caret());
    start_ = std::min(start_, startWithin(editor.text().length()));
}

std::string FieldView::drawn(const FieldEditor& editor, std::size_t columns) {
    const std::wstring_view title = titleIn(columns);
    const std::size_t room = roomBeside(title, columns);
    scrollTo(editor, room);
    std::string line = "\r" + displayBytes(title);
    caretColumn_ = displayWidth(title);
    std::size_t used = 0;
    bool isInverse = false;
    for (const FieldCell& cell : fieldCells(editor.text())) {
        if (cell.units.location < start_) {
            continue;
        }
        if (used + cell.columns > room) {
            break;
        }
        used += cell.columns;
        caretColumn_ += endOf(cell) <= editor.caret() ? cell.columns : 0;
        if (isSelected(cell, editor.selection()) != isInverse) {
            isInverse = !isInverse;
            line.append(isInverse ? kInverse : kNotInverse);
        }
        line.append(displayBytes(cell.shown));
    }
    endColumn_ = displayWidth(title) + used;
    line.append(isInverse ? kNotInverse : std::string_view()).append(kClearRest).append("\r");
    return caretColumn_ == 0 ? line : line + "\x1b[" + std::to_string(caretColumn_) + "C";
}

std::string FieldView::drawnAfterResize(const FieldEditor& editor, std::size_t columns) {
    // The caret went along with the text, into one of the lines that there are now. Behind a text that just fills a
    // line it stays in that line.
    const bool isAtEnd = caretColumn_ > 0 && caretColumn_ == endColumn_;
    const std::size_t lines = (caretColumn_ - (isAtEnd ? 1 : 0)) / std::max<std::size_t>(columns, 1);
    std::string up = lines == 0 ? std::string() : "\x1b[" + std::to_string(lines) + "A";
    return up.append("\r").append(kClearBelow) + drawn(editor, columns);
}

std::string FieldView::drawnAtEnd(const NSString& text, std::size_t columns) const {
    const std::wstring_view title = titleIn(columns);
    const std::size_t room = roomBeside(title, columns);
    std::wstring shown;
    std::size_t used = 0;
    for (const FieldCell& cell : fieldCells(text)) {
        used += cell.columns;
        if (used > room) {
            break;
        }
        shown.append(cell.shown);
    }
    return "\r" + displayBytes(title) + displayBytes(shown) + std::string(kClearRest);
}

} // namespace qk::info
