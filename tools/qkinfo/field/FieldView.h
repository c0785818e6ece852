// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/field/FieldEditor.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace qk::info {

/// Draws a field into one line of a terminal, behind what it is called. Where the text is too long for the line, it
/// shows the part around the caret. The last column is only ever used by the caret, so nothing breaks into a second
/// line.
class FieldView {
public:
    explicit FieldView(std::string_view title);

    /// What draws `editor` over what was drawn before, in the line of the caret.
    [[nodiscard]] std::string drawn(const FieldEditor& editor, std::size_t columns);

    /// As `drawn`, on a terminal that has just got another width: one that became narrower has broken what was drawn
    /// into several lines.
    [[nodiscard]] std::string drawnAfterResize(const FieldEditor& editor, std::size_t columns);

    /// What leaves `text` behind in the line of the caret, from its beginning and as far as there is room.
    [[nodiscard]] std::string drawnAtEnd(const NSString& text, std::size_t columns) const;

private:
    [[nodiscard]] std::wstring_view titleIn(std::size_t columns) const;
    void scrollTo(const FieldEditor& editor, std::size_t room);

    std::wstring title_;
    std::size_t start_ = 0;       // where the shown part of the text begins, in units
    std::size_t caretColumn_ = 0; // where the caret was drawn
    std::size_t endColumn_ = 0;   // and the end of the line
};

} // namespace qk::info
