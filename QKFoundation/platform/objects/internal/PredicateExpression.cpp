// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/internal/PredicateExpression.h"

#include "QKFoundation/platform/objects/internal/PredicateTokens.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <set>
#include <string_view>

namespace qk::internal {
namespace {

/// The shortest digits that are read as `number`, and not as an integer, which would be compared with more of its
/// digits.
NSString shortestText(double number) {
    char digits[32];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    const std::string_view text(digits, static_cast<std::size_t>(end - digits));
    const NSString shortest = NSString::fromUTF8Lossy(text);
    return text.find_first_of(".e") == std::string_view::npos ? shortest + ".0" : shortest;
}

NSString castText(const NSString& value, const NSString& type) {
    return "CAST(" + value + ", " + quotedPredicateText(type) + ")";
}

NSString textOf(const NSNumber& number) {
    if (number.isBoolean()) {
        return number.boolValue() ? NSString("YES") : NSString("NO");
    }
    if (!number.isFloating()) {
        return number.stringValue();
    }
    const double value = number.doubleValue();
    return std::isfinite(value) ? shortestText(value) : castText(quotedPredicateText(number.stringValue()), "NSNumber");
}

NSString textOf(const NSDate& date) {
    const double seconds = date.timeIntervalSince1970() - kSecondsBeforeReferenceDate;
    const NSString text =
        std::isfinite(seconds) ? shortestText(seconds) : quotedPredicateText(NSNumber(seconds).stringValue());
    return castText(text, "NSDate");
}

template <typename Elements, typename TextOf>
NSString listText(const Elements& elements, TextOf textOf) {
    NSMutableString text;
    text.append(u'{');
    for (const auto& element : elements) {
        text.append(text.length() > 1 ? u", " : u"").append(textOf(element));
    }
    return text.append(u'}').copy();
}

NSString textOf(const Value& value, int depth) {
    if (value.isNull()) {
        return "NULL";
    }
    if (const auto* string = value.as<NSString>()) {
        return quotedPredicateText(*string);
    }
    if (const auto* number = value.as<NSNumber>()) {
        return textOf(*number);
    }
    if (const auto* date = value.as<NSDate>()) {
        return textOf(*date);
    }
    if (const auto* array = value.as<NSArray>(); array != nullptr && depth < kMaximumPredicateDepth) {
        return listText(*array, [&](const Value& element) { return textOf(element, depth + 1); });
    }
    return value.description();
}

} // namespace

PredicateExpression PredicateExpression::list(std::vector<PredicateExpression> elements) {
    std::vector<Value> constants;
    constants.reserve(elements.size());
    for (const PredicateExpression& element : elements) {
        if (const Value* constant = element.constantValue()) {
            constants.push_back(*constant);
        }
    }
    return constants.size() == elements.size() ? constant(NSArray(std::move(constants)))
                                               : PredicateExpression(std::move(elements));
}

const Value* PredicateExpression::evaluate(const NSPredicate::Lookup& lookup, std::optional<Value>& room) const {
    const Value* value = constantValue();
    if (const auto* keyPath = std::get_if<KeyPath>(&held_)) {
        room = lookup(keyPath->path);
        value = room.has_value() ? &*room : nullptr;
    } else if (const auto* elements = std::get_if<List>(&held_)) {
        std::vector<Value> values;
        values.reserve(elements->size());
        for (const PredicateExpression& element : *elements) {
            std::optional<Value> roomOfElement;
            const Value* found = element.evaluate(lookup, roomOfElement);
            values.push_back(found != nullptr ? *found : Value());
        }
        value = &room.emplace(NSArray(std::move(values)));
    }
    return value != nullptr && !value->isNull() ? value : nullptr;
}

NSString PredicateExpression::text() const {
    if (const Value* value = constantValue()) {
        return textOf(*value, 0);
    }
    if (const auto* keyPath = std::get_if<KeyPath>(&held_)) {
        return writtenKeyPath(keyPath->path);
    }
    return listText(std::get<List>(held_), [](const PredicateExpression& element) { return element.text(); });
}

void PredicateExpression::addKeyPaths(std::vector<NSString>& keyPaths) const {
    if (const auto* keyPath = std::get_if<KeyPath>(&held_)) {
        keyPaths.push_back(keyPath->path);
    } else if (const auto* elements = std::get_if<List>(&held_)) {
        for (const PredicateExpression& element : *elements) {
            element.addKeyPaths(keyPaths);
        }
    }
}

std::vector<NSString> withoutRepetition(const std::vector<NSString>& keyPaths) {
    std::set<NSString> seen;
    std::vector<NSString> once;
    std::ranges::copy_if(keyPaths, std::back_inserter(once),
                         [&](const NSString& keyPath) { return seen.insert(keyPath).second; });
    return once;
}

} // namespace qk::internal
