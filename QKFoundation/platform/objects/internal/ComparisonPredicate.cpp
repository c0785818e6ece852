// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/internal/ComparisonPredicate.h"

#include "QKFoundation/platform/objects/internal/ValueOrder.h"
#include "QKFoundation/platform/values/LowerCase.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

namespace qk::internal {
namespace {

using Operator = PredicateOperator;
using Modifier = PredicateModifier;

const Value* unlessNull(const Value& value) {
    return value.isNull() ? nullptr : &value;
}

NSString folded(const NSString& text, bool ignoresCase) {
    return ignoresCase ? NSString(lowerCased(text.units())) : text;
}

/// Compares values of which null is nil. What does not fit together is not equal, in no order, and no part of the
/// other.
class Comparator {
public:
    explicit Comparator(bool ignoresCase) : ignoresCase_(ignoresCase) {}

    [[nodiscard]] bool compare(Operator type, const Value* left, const Value* right) const {
        switch (type) {
        case Operator::EqualTo: return areEqual(left, right);
        case Operator::NotEqualTo: return !areEqual(left, right);
        case Operator::Between: return isBetween(left, right);
        case Operator::In: return isIn(left, right) || anyIsIn(left, right);
        case Operator::Contains: return isIn(right, left);
        case Operator::LessThan:
        case Operator::LessThanOrEqualTo:
        case Operator::GreaterThan:
        case Operator::GreaterThanOrEqualTo: return isOrdered(type, left, right);
        case Operator::BeginsWith:
        case Operator::EndsWith:
        case Operator::Like: return fitsText(type, left, right);
        }
        return false;
    }

private:
    [[nodiscard]] bool areEqual(const Value* left, const Value* right) const {
        if (left == nullptr || right == nullptr) {
            return left == right;
        }
        const auto* leftArray = left->as<NSArray>();
        const auto* rightArray = right->as<NSArray>();
        if ((leftArray != nullptr) != (rightArray != nullptr)) {
            return leftArray != nullptr ? holds(*leftArray, right) : holds(*rightArray, left);
        }
        const auto* leftText = left->as<NSString>();
        const auto* rightText = right->as<NSString>();
        return ignoresCase_ && leftText != nullptr && rightText != nullptr
                   ? folded(*leftText, true) == folded(*rightText, true)
                   : *left == *right;
    }

    [[nodiscard]] bool holds(const NSArray& array, const Value* value) const {
        return std::ranges::any_of(array, [&](const Value& element) {
            const Value* one = unlessNull(element);
            const bool isNested = one != nullptr && one->as<NSArray>() != nullptr;
            const bool isArray = value != nullptr && value->as<NSArray>() != nullptr;
            return isNested == isArray && areEqual(one, value);
        });
    }

    [[nodiscard]] bool isIn(const Value* part, const Value* whole) const {
        if (whole == nullptr) {
            return false;
        }
        if (const auto* array = whole->as<NSArray>()) {
            return holds(*array, part);
        }
        const auto* text = whole->as<NSString>();
        const auto* piece = part != nullptr ? part->as<NSString>() : nullptr;
        return text != nullptr && piece != nullptr &&
               folded(*text, ignoresCase_).contains(folded(*piece, ignoresCase_).units());
    }

    [[nodiscard]] bool anyIsIn(const Value* values, const Value* array) const {
        const auto* one = values != nullptr ? values->as<NSArray>() : nullptr;
        const auto* other = array != nullptr ? array->as<NSArray>() : nullptr;
        return one != nullptr && other != nullptr &&
               std::ranges::any_of(*one, [&](const Value& value) { return holds(*other, unlessNull(value)); });
    }

    [[nodiscard]] std::optional<NSComparisonResult> order(const Value* left, const Value* right) const {
        if (left == nullptr || right == nullptr) {
            return std::nullopt;
        }
        const auto* leftText = left->as<NSString>();
        const auto* rightText = right->as<NSString>();
        return ignoresCase_ && leftText != nullptr && rightText != nullptr
                   ? folded(*leftText, true).compare(folded(*rightText, true))
                   : orderOf(*left, *right);
    }

    [[nodiscard]] bool isOrdered(Operator type, const Value* left, const Value* right) const {
        const auto result = order(left, right);
        if (!result.has_value()) {
            return false;
        }
        const int sign = static_cast<int>(*result);
        switch (type) {
        case Operator::LessThan: return sign < 0;
        case Operator::LessThanOrEqualTo: return sign <= 0;
        case Operator::GreaterThan: return sign > 0;
        default: return sign >= 0;
        }
    }

    [[nodiscard]] bool isBetween(const Value* value, const Value* bounds) const {
        const auto* both = bounds != nullptr ? bounds->as<NSArray>() : nullptr;
        return both != nullptr && both->count() == 2 &&
               isOrdered(Operator::GreaterThanOrEqualTo, value, unlessNull((*both)[0])) &&
               isOrdered(Operator::LessThanOrEqualTo, value, unlessNull((*both)[1]));
    }

    [[nodiscard]] bool fitsText(Operator type, const Value* left, const Value* right) const {
        const auto* text = left != nullptr ? left->as<NSString>() : nullptr;
        const auto* form = right != nullptr ? right->as<NSString>() : nullptr;
        if (text == nullptr || form == nullptr) {
            return false;
        }
        const NSString foldedText = folded(*text, ignoresCase_);
        const NSString foldedForm = folded(*form, ignoresCase_);
        switch (type) {
        case Operator::BeginsWith: return foldedText.hasPrefix(foldedForm);
        case Operator::EndsWith: return foldedText.hasSuffix(foldedForm);
        default: return isLike(foldedText.units(), foldedForm.units());
        }
    }

    bool ignoresCase_;
};

NSString textOf(Operator type) {
    switch (type) {
    case Operator::EqualTo: return "==";
    case Operator::NotEqualTo: return "!=";
    case Operator::LessThan: return "<";
    case Operator::LessThanOrEqualTo: return "<=";
    case Operator::GreaterThan: return ">";
    case Operator::GreaterThanOrEqualTo: return ">=";
    case Operator::Between: return "BETWEEN";
    case Operator::In: return "IN";
    case Operator::BeginsWith: return "BEGINSWITH";
    case Operator::EndsWith: return "ENDSWITH";
    case Operator::Contains: return "CONTAINS";
    case Operator::Like: break;
    }
    return "LIKE";
}

NSString textOf(Modifier modifier) {
    switch (modifier) {
    case Modifier::Any: return "ANY ";
    case Modifier::All: return "ALL ";
    case Modifier::None: return "NONE ";
    case Modifier::Direct: break;
    }
    return "";
}

class ComparisonPredicate final : public NSPredicate {
public:
    explicit ComparisonPredicate(PredicateComparison comparison) : comparison_(std::move(comparison)) {}

    [[nodiscard]] bool evaluateWithLookup(const Lookup& lookup) const override {
        std::optional<Value> leftRoom;
        std::optional<Value> rightRoom;
        const Value* left = comparison_.left.evaluate(lookup, leftRoom);
        const Value* right = comparison_.right.evaluate(lookup, rightRoom);
        const auto meets = [&](const Value* value) {
            return Comparator(comparison_.ignoresCase).compare(comparison_.type, value, right);
        };
        return comparison_.modifier == Modifier::Direct ? meets(left) : elementsMeet(left, meets);
    }

    [[nodiscard]] NSString predicateFormat() const override {
        return textOf(comparison_.modifier) + comparison_.left.text() + " " + textOf(comparison_.type) +
               (comparison_.ignoresCase ? NSString("[c] ") : NSString(" ")) + comparison_.right.text();
    }

    [[nodiscard]] std::vector<NSString> keyPaths() const override {
        std::vector<NSString> all;
        comparison_.left.addKeyPaths(all);
        comparison_.right.addKeyPaths(all);
        return withoutRepetition(all);
    }

private:
    /// Nil has no elements, and a value that is no array is its only one.
    template <typename Meets>
    [[nodiscard]] bool elementsMeet(const Value* value, Meets meets) const {
        const auto* array = value != nullptr ? value->as<NSArray>() : nullptr;
        const auto elements = array != nullptr ? array->values() : std::span(value, value != nullptr ? 1 : 0);
        const auto elementMeets = [&](const Value& element) { return meets(unlessNull(element)); };
        switch (comparison_.modifier) {
        case Modifier::All: return std::ranges::all_of(elements, elementMeets);
        case Modifier::None: return std::ranges::none_of(elements, elementMeets);
        default: return std::ranges::any_of(elements, elementMeets);
        }
    }

    PredicateComparison comparison_;
};

} // namespace

bool isLike(std::u16string_view text, std::u16string_view pattern) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t afterStar = std::u16string_view::npos; // where the pattern goes on behind the last "*"
    std::size_t resumeAt = 0;                          // and how much of the text that star has not taken yet
    while (at < text.size()) {
        const bool isEscape = in + 1 < pattern.size() && pattern[in] == u'\\';
        const std::size_t length = isEscape ? 2 : 1;
        if (in < pattern.size() && pattern[in] == u'*') {
            afterStar = ++in;
            resumeAt = at;
        } else if (in < pattern.size() &&
                   ((!isEscape && pattern[in] == u'?') || pattern[in + length - 1] == text[at])) {
            in += length;
            ++at;
        } else if (afterStar != std::u16string_view::npos) {
            in = afterStar;
            at = ++resumeAt;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', in) == std::u16string_view::npos;
}

std::shared_ptr<const NSPredicate> comparisonPredicate(PredicateComparison comparison) {
    return std::make_shared<ComparisonPredicate>(std::move(comparison));
}

} // namespace qk::internal
