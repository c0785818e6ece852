// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/internal/PredicateExpression.h"

#include <memory>
#include <vector>

namespace qk::internal {

enum class PredicateOperator {
    EqualTo,
    NotEqualTo,
    LessThan,
    LessThanOrEqualTo,
    GreaterThan,
    GreaterThanOrEqualTo,
    Between,
    In,
    BeginsWith,
    EndsWith,
    Contains,
    Like
};

/// Which elements of the value on the left must meet the comparison; `Direct`: the value itself.
enum class PredicateModifier { Direct, Any, All, None };

/// What two expressions are compared by.
struct PredicateComparison {
    PredicateModifier modifier = PredicateModifier::Direct;
    PredicateExpression left;
    PredicateOperator type = PredicateOperator::EqualTo;
    bool ignoresCase = false;
    PredicateExpression right;
};

/// Whether `text` has the form of `pattern`: "?" stands for any unit, "*" for any number of them, "\" takes the meaning
/// of the unit behind it away.
[[nodiscard]] bool isLike(std::u16string_view text, std::u16string_view pattern);

/// A predicate that compares two expressions.
[[nodiscard]] std::shared_ptr<const NSPredicate> comparisonPredicate(PredicateComparison comparison);

} // namespace qk::internal
