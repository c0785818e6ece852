// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/internal/PredicateExpression.h"
#include "QKFoundation/platform/objects/internal/PredicateTokens.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace qk::internal {

/// Reads the sides of comparisons off the text of a predicate, token by token. Raises `NSInvalidArgumentException`
/// where none stands.
class PredicateExpressionReader {
public:
    /// `arguments` are those of the placeholders, and outlive the reader.
    PredicateExpressionReader(const NSString& format, const std::vector<Value>& arguments)
        : tokens_(format), arguments_(arguments) {
        token_ = tokens_.next();
    }

    /// The token that comes next.
    [[nodiscard]] const PredicateToken& token() const noexcept { return token_; }

    /// Takes the next token when it is that one. Returns whether it was.
    bool takeWord(std::u16string_view word) { return takeIf(token_.isWord(word)); }
    bool takeMark(std::u16string_view mark) { return takeIf(token_.isMark(mark)); }

    /// Takes the next token, which must be that one.
    void expectMark(std::u16string_view mark);

    /// Takes one expression.
    [[nodiscard]] PredicateExpression readExpression() { return readExpression(0); }

private:
    PredicateToken take();
    bool takeIf(bool isIt);
    PredicateExpression readExpression(int depth);
    PredicateExpression readWord(const PredicateToken& word);
    PredicateExpression readCast();
    PredicateExpression readList(int depth);
    PredicateExpression readArgument(char16_t letter);

    PredicateTokenizer tokens_;
    const std::vector<Value>& arguments_;
    std::size_t nextArgument_ = 0;
    PredicateToken token_;
};

} // namespace qk::internal
