// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSNumber.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace qk::internal {

/// A word, number, text or mark of a predicate's text.
struct PredicateToken {
    enum class Kind {
        End,
        Word,    ///< a key word, or a key path: letters, digits, "_" and single dots between them
        KeyPath, ///< a key path that is no key word whatever it looks like: "#" before a word or a quoted text
        Text,    ///< quoted
        Number,
        Mark,       ///< one or two characters, such as "<="
        Placeholder ///< "%@", "%K", "%d" and their like
    };

    Kind kind = Kind::End;
    NSString text;                  ///< of a quoted text what it stands for; of a placeholder its letter
    std::optional<NSNumber> number; ///< of a number

    /// Whether it is the key word `word`, given in capital letters, in any case.
    [[nodiscard]] bool isWord(std::u16string_view word) const;
    [[nodiscard]] bool isMark(std::u16string_view mark) const { return kind == Kind::Mark && text.units() == mark; }
};

/// Takes the text of a predicate apart. Raises `NSInvalidArgumentException` for what no token begins with.
class PredicateTokenizer {
public:
    explicit PredicateTokenizer(const NSString& text) : text_(text), rest_(text_.units()) {}

    /// The next token, which is taken.
    PredicateToken next();

private:
    [[nodiscard]] std::u16string_view take(std::size_t count);
    [[nodiscard]] char16_t peek(std::size_t index) const { return index < rest_.size() ? rest_[index] : u'\0'; }
    PredicateToken word();
    PredicateToken keyPath();
    PredicateToken quoted();
    PredicateToken number();
    PredicateToken placeholder();
    PredicateToken mark();

    NSString text_;
    std::u16string_view rest_;
};

/// Whether `word` is a key word, in any case.
[[nodiscard]] bool isPredicateKeyWord(const NSString& word);

/// Texts that the tokenizer reads back: `text` in quotation marks, `keyPath` as a word or, where that is not possible,
/// after "#".
[[nodiscard]] NSString quotedPredicateText(const NSString& text);
[[nodiscard]] NSString writtenKeyPath(const NSString& keyPath);

/// Raises the exception of a text that is no predicate.
[[noreturn]] void raiseInvalidPredicate(const NSString& reason);

} // namespace qk::internal
