// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/internal/PredicateExpressionReader.h"

#include <limits>
#include <optional>
#include <utility>

namespace qk::internal {
namespace {

using Kind = PredicateToken::Kind;

/// A number that has no digits, as `NSNumber` shows it; else the number that the text begins with.
NSNumber unusualNumber(const NSString& text) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (text == "nan") {
        return NSNumber(std::numeric_limits<double>::quiet_NaN());
    }
    return NSNumber(text == "inf" ? kInfinity : text == "-inf" ? -kInfinity : text.doubleValue());
}

} // namespace

PredicateToken PredicateExpressionReader::take() {
    return std::exchange(token_, tokens_.next());
}

bool PredicateExpressionReader::takeIf(bool isIt) {
    if (isIt) {
        take();
    }
    return isIt;
}

void PredicateExpressionReader::expectMark(std::u16string_view mark) {
    if (!takeMark(mark)) {
        raiseInvalidPredicate(NSString(mark) + " is missing");
    }
}

PredicateExpression PredicateExpressionReader::readExpression(int depth) {
    if (takeMark(u"{")) {
        return readList(depth + 1);
    }
    const PredicateToken token = take();
    switch (token.kind) {
    case Kind::Text: return PredicateExpression::constant(token.text);
    case Kind::Number: return PredicateExpression::constant(*token.number);
    case Kind::KeyPath: return PredicateExpression::keyPath(token.text);
    case Kind::Placeholder: return readArgument(token.text.characterAtIndex(0));
    case Kind::Word: return readWord(token);
    case Kind::Mark:
    case Kind::End: break;
    }
    raiseInvalidPredicate("a value is missing");
}

PredicateExpression PredicateExpressionReader::readWord(const PredicateToken& word) {
    static constexpr std::u16string_view kSelf = u"SELF.";
    if (word.isWord(u"YES") || word.isWord(u"TRUE")) {
        return PredicateExpression::constant(true);
    }
    if (word.isWord(u"NO") || word.isWord(u"FALSE")) {
        return PredicateExpression::constant(false);
    }
    if (word.isWord(u"NULL") || word.isWord(u"NIL")) {
        return PredicateExpression::constant(NSNull{});
    }
    if (word.isWord(u"SELF")) {
        return PredicateExpression::keyPath("SELF");
    }
    if (word.isWord(u"CAST") && takeMark(u"(")) {
        return readCast();
    }
    if (isPredicateKeyWord(word.text)) {
        raiseInvalidPredicate("a value is missing in front of " + word.text);
    }
    const PredicateToken head{Kind::Word, word.text.substringToIndex(kSelf.size()), std::nullopt};
    return PredicateExpression::keyPath(head.isWord(kSelf) ? word.text.substringFromIndex(kSelf.size()) : word.text);
}

PredicateExpression PredicateExpressionReader::readCast() {
    const PredicateToken value = take();
    expectMark(u",");
    const PredicateToken type = take();
    expectMark(u")");
    const bool isDate = type.kind == Kind::Text && type.text == "NSDate";
    const bool isNumber = type.kind == Kind::Text && type.text == "NSNumber";
    if ((value.kind != Kind::Number && value.kind != Kind::Text) || (!isDate && !isNumber)) {
        raiseInvalidPredicate("of the casts, only those of a number or text to NSDate and NSNumber are supported");
    }
    const NSNumber number = value.number.has_value() ? *value.number : unusualNumber(value.text);
    if (isNumber) {
        return PredicateExpression::constant(number);
    }
    return PredicateExpression::constant(
        NSDate::dateWithTimeIntervalSince1970(number.doubleValue() + kSecondsBeforeReferenceDate));
}

PredicateExpression PredicateExpressionReader::readList(int depth) {
    if (depth > kMaximumPredicateDepth) {
        raiseInvalidPredicate("lists nested too deep");
    }
    std::vector<PredicateExpression> elements;
    if (!takeMark(u"}")) {
        do {
            elements.push_back(readExpression(depth));
        } while (takeMark(u","));
        expectMark(u"}");
    }
    return PredicateExpression::list(std::move(elements));
}

PredicateExpression PredicateExpressionReader::readArgument(char16_t letter) {
    if (nextArgument_ == arguments_.size()) {
        raiseInvalidPredicate("an argument is missing");
    }
    const Value& argument = arguments_[nextArgument_++];
    if (letter == u'@') {
        return PredicateExpression::constant(argument);
    }
    if (letter == u'K') {
        if (const auto* keyPath = argument.as<NSString>()) {
            return PredicateExpression::keyPath(*keyPath);
        }
        raiseInvalidPredicate("the argument of a key path is no text");
    }
    const auto* number = argument.as<NSNumber>();
    if (number == nullptr) {
        raiseInvalidPredicate("the argument of a number is none");
    }
    switch (letter) {
    case u'u': return PredicateExpression::constant(number->unsignedIntegerValue());
    case u'f':
    case u'g': return PredicateExpression::constant(number->doubleValue());
    default: return PredicateExpression::constant(number->integerValue());
    }
}

} // namespace qk::internal
