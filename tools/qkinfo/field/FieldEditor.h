// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"
#include "QKFoundation/platform/values/NSRange.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <memory>

namespace qk::info {

enum class EditOutcome {
    Done,    ///< the field shows what came of it
    Refused, ///< the formatter would not have it; nothing changed
    Nothing, ///< there was nothing to do
};

/// Where the caret goes. Left and right are whole characters with their marks.
enum class Motion { Left, Right, Start, End };

enum class Selecting { No, Yes };

/// The text of a field and what is selected in it. Every edit goes through a formatter, as in a text field: it sees the
/// text that is proposed, with the caret behind what was typed, and the text and selection of before; of a deletion
/// the selection is what gets deleted.
///
/// Positions count UTF-16 units.
class FieldEditor {
public:
    /// An empty field. `formatter` is not null.
    explicit FieldEditor(std::shared_ptr<const NSFormatter> formatter) : formatter_(std::move(formatter)) {}

    [[nodiscard]] const NSString& text() const { return text_; }
    [[nodiscard]] NSRange selection() const;

    /// The end of the selection that moves.
    [[nodiscard]] std::size_t caret() const { return caret_; }

    /// Puts `typed` in the place of the selection.
    EditOutcome insert(const NSString& typed);

    /// As `insert`, with `pasted` brought onto one line: line ends at its end go, others become blanks.
    EditOutcome paste(const NSString& pasted);

    /// Deletes the selection; without one, all between the caret and where `motion` would bring it.
    EditOutcome remove(Motion motion);

    /// Moves the caret. A selection is extended or given up, and when it is given up by a step to one side, that is
    /// where the caret goes.
    void move(Motion motion, Selecting selecting);

private:
    [[nodiscard]] std::size_t target(Motion motion) const;
    EditOutcome replace(NSRange range, const NSString& replacement);
    void select(NSRange range);

    std::shared_ptr<const NSFormatter> formatter_;
    NSString text_;
    std::size_t anchor_ = 0; // the end of the selection that stays
    std::size_t caret_ = 0;
};

} // namespace qk::info
