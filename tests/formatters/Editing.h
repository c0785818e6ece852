// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"

#include "tests/platform/values/Printing.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string_view>

namespace qk {

/// What a formatter makes of one edit.
struct Judged {
    bool isValid = false;
    NSString text;
    NSRange selection;

    friend bool operator==(const Judged&, const Judged&) = default;
};

inline void PrintTo(const Judged& judged, std::ostream* out) {
    *out << (judged.isValid ? "accepted \"" : "corrected to \"") << judged.text.utf8Lossy() << "\", caret at "
         << judged.selection.location << ", " << judged.selection.length << " selected";
}

/// Asks `formatter` about the edit from `original` to `proposed`. The error description is written by none.
inline Judged judge(const NSFormatter& formatter, const NSString& proposed, NSRange selection, const NSString& original,
                    NSRange originalSelection) {
    Judged judged{false, proposed, selection};
    std::optional<NSString> error = NSString("untouched");
    judged.isValid = formatter.isPartialStringValid(judged.text, judged.selection, original, originalSelection, error);
    if (error != "untouched") {
        judged.text = "the error description was written";
    }
    return judged;
}

/// The answer to an edit that is accepted as it is.
inline Judged accepted(const NSString& text, std::uint64_t caret) {
    return {true, text, {caret, 0}};
}

/// The answer to an edit in whose place `text` is shown.
inline Judged corrected(const NSString& text, std::uint64_t caret) {
    return {false, text, {caret, 0}};
}

/// A field as the user interface keeps it: a text and a selection, and a formatter that judges each edit.
struct Field {
    NSString text;
    NSRange selection;

    /// Replaces the selection by `typed`.
    bool type(const NSFormatter& formatter, const NSString& typed) { return replace(formatter, selection, typed); }

    /// Deletes the selection, or the character before the caret.
    bool backspace(const NSFormatter& formatter) {
        const bool hasSelection = selection.length > 0 || selection.location == 0;
        return replace(formatter, hasSelection ? selection : NSRange{selection.location - 1, 1}, "");
    }

    /// Deletes the selection, or the character behind the caret.
    bool deleteForward(const NSFormatter& formatter) {
        const bool hasSelection = selection.length > 0 || selection.location == text.length();
        return replace(formatter, hasSelection ? selection : NSRange{selection.location, 1}, "");
    }

    bool replace(const NSFormatter& formatter, NSRange range, const NSString& typed) {
        const NSString proposed =
            text.substringToIndex(range.location) + typed + text.substringFromIndex(range.location + range.length);
        const Judged judged = judge(formatter, proposed, {range.location + typed.length(), 0}, text, range);
        // Where the text was not replaced, the refusal stands, and the field stays as it was.
        if (judged.isValid || judged.text.storage() != proposed.storage()) {
            text = judged.text;
            selection = judged.selection;
        }
        return judged.isValid;
    }
};

} // namespace qk
