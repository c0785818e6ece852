// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSPredicate.h"

#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace qk::internal {

/// How deep predicates and lists may be nested, so that no text and no caller exhausts the stack.
inline constexpr int kMaximumPredicateDepth = 200;

/// From 1970 to 2001, the moment from which the text of a date counts its seconds.
inline constexpr double kSecondsBeforeReferenceDate = 978307200;

/// One side of a comparison: a constant, a key path, or a list of expressions among which there is a key path.
class PredicateExpression {
public:
    /// A constant; the null marker is nil.
    [[nodiscard]] static PredicateExpression constant(Value value) { return PredicateExpression(std::move(value)); }
    [[nodiscard]] static PredicateExpression keyPath(NSString keyPath) {
        return PredicateExpression(KeyPath{std::move(keyPath)});
    }
    /// A constant array when all elements are constants.
    [[nodiscard]] static PredicateExpression list(std::vector<PredicateExpression> elements);

    /// The constant; null for any other expression.
    [[nodiscard]] const Value* constantValue() const noexcept { return std::get_if<Value>(&held_); }

    /// What the expression stands for; null for nil and the null marker. `room` holds it when nothing else does.
    [[nodiscard]] const Value* evaluate(const NSPredicate::Lookup& lookup, std::optional<Value>& room) const;

    /// The expression as a text.
    [[nodiscard]] NSString text() const;

    /// Adds the key paths that it asks for, in the order of the text.
    void addKeyPaths(std::vector<NSString>& keyPaths) const;

private:
    struct KeyPath {
        NSString path;
    };
    using List = std::vector<PredicateExpression>;
    using Held = std::variant<Value, KeyPath, List>;

    explicit PredicateExpression(Held held) : held_(std::move(held)) {}

    Held held_;
};

/// `keyPaths` with each of them where it stands first only.
[[nodiscard]] std::vector<NSString> withoutRepetition(const std::vector<NSString>& keyPaths);

} // namespace qk::internal
