// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldEditor.h"

#include "tools/qkinfo/field/FieldCells.h"

#include <algorithm>
#include <string_view>

namespace qk::info {

namespace {

constexpr std::u16string_view kLineEnds = u"\n\r\u0085\u2028\u2029";

NSString onOneLine(const NSString& text) {
    const std::u16string_view all = text.units();
    const std::u16string_view units = all.substr(0, all.find_last_not_of(kLineEnds) + 1);
    NSMutableString line;
    for (std::size_t index = 0; index < units.size(); ++index) {
        const bool isFirstHalf = units[index] == u'\r' && index + 1 < units.size() && units[index + 1] == u'\n';
        if (!isFirstHalf) {
            line.append(kLineEnds.find(units[index]) != std::u16string_view::npos ? u' ' : units[index]);
        }
    }
    return line.copy();
}

} // namespace

NSRange FieldEditor::selection() const {
    const auto [first, last] = std::minmax(anchor_, caret_);
    return {first, last - first};
}

EditOutcome FieldEditor::insert(const NSString& typed) {
    return replace(selection(), typed);
}

EditOutcome FieldEditor::paste(const NSString& pasted) {
    return insert(onOneLine(pasted));
}

EditOutcome FieldEditor::remove(Motion motion) {
    if (anchor_ != caret_) {
        return replace(selection(), {});
    }
    const std::size_t other = target(motion);
    const std::size_t first = std::min(caret_, other);
    return replace({first, std::max(caret_, other) - first}, {});
}

void FieldEditor::move(Motion motion, Selecting selecting) {
    const NSRange selected = selection();
    if (selecting == Selecting::Yes || selected.length == 0) {
        caret_ = target(motion);
    } else if (motion == Motion::Left || motion == Motion::Start) {
        caret_ = motion == Motion::Left ? selected.location : 0;
    } else {
        caret_ = motion == Motion::Right ? selected.location + selected.length : text_.length();
    }
    anchor_ = selecting == Selecting::Yes ? anchor_ : caret_;
}

std::size_t FieldEditor::target(Motion motion) const {
    if (motion == Motion::Start) {
        return 0;
    }
    std::size_t before = 0;
    for (const FieldCell& cell : fieldCells(text_)) {
        const std::size_t end = cell.units.location + cell.units.length;
        if (motion == Motion::Right && end > caret_) {
            return end;
        }
        if (motion == Motion::Left && end >= caret_) {
            return before;
        }
        before = end;
    }
    return motion == Motion::Left ? before : text_.length();
}

EditOutcome FieldEditor::replace(NSRange range, const NSString& replacement) {
    if (range.length == 0 && replacement.isEmpty()) {
        return EditOutcome::Nothing;
    }
    const NSString proposed =
        text_.substringToIndex(range.location) + replacement + text_.substringFromIndex(range.location + range.length);
    const NSRange proposedSelection{range.location + replacement.length(), 0};
    NSString shown = proposed;
    NSRange shownSelection = proposedSelection;
    std::optional<NSString> description;
    if (formatter_->isPartialStringValid(shown, shownSelection, text_, range, description)) {
        text_ = proposed;
        select(proposedSelection);
        return EditOutcome::Done;
    }
    // A formatter may correct a text to an equal one: it is the replaced object that tells a correction from a refusal.
    if (shown.storage() == proposed.storage()) {
        return EditOutcome::Refused;
    }
    text_ = shown;
    select(shownSelection);
    return EditOutcome::Done;
}

void FieldEditor::select(NSRange range) {
    anchor_ = std::min<std::uint64_t>(range.location, text_.length());
    caret_ = anchor_ + std::min<std::uint64_t>(range.length, text_.length() - anchor_);
}

} // namespace qk::info
