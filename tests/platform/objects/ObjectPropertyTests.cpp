// SPDX-License-Identifier: Apache-2.0
// Laws of predicates and of orders, over values of every kind.
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSPredicate.h"
#include "QKFoundation/platform/objects/NSSortDescriptor.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qk {
namespace {

/// Texts of every kind of unit, and some that mean something to the parser.
rc::Gen<NSString> anyText() {
    const auto unit = rc::gen::cast<char16_t>(
        rc::gen::weightedOneOf<int>({{6, rc::gen::cast<int>(rc::gen::elementOf(std::string("abAND.#'\"\\ %@_09\n")))},
                                     {1, rc::gen::inRange(0, 0x10000)}}));
    const auto units = rc::gen::map(rc::gen::container<std::u16string>(unit),
                                    [](const std::u16string& text) { return NSString(text); });
    return rc::gen::oneOf(units,
                          rc::gen::element<NSString>("AND", "self", "SELF", "SELF.a", "a.b", "in", "nil", "not.a"));
}

rc::Gen<Value> anyConstant() {
    const auto number = [](auto value) { return Value(value); };
    return rc::gen::oneOf(
        rc::gen::map(anyText(), [](const NSString& text) { return Value(text); }),
        rc::gen::map(rc::gen::arbitrary<std::int64_t>(), number),
        rc::gen::map(rc::gen::arbitrary<std::uint64_t>(), number), rc::gen::map(rc::gen::arbitrary<double>(), number),
        rc::gen::map(rc::gen::element(HUGE_VAL, -HUGE_VAL, std::nan(""), 5e-324, -0.0), number),
        rc::gen::map(rc::gen::arbitrary<bool>(), number), rc::gen::just(Value()),
        rc::gen::map(rc::gen::element(HUGE_VAL, -HUGE_VAL, std::nan("")),
                     [](double seconds) { return Value(NSDate::dateWithTimeIntervalSince1970(seconds)); }),
        rc::gen::map(rc::gen::inRange(-2'000'000'000, 2'000'000'000),
                     [](int quarters) { return Value(NSDate::dateWithTimeIntervalSince1970(quarters / 4.0)); }));
}

rc::Gen<Value> anyOperand() {
    return rc::gen::oneOf(anyConstant(),
                          rc::gen::map(rc::gen::container<std::vector<Value>>(anyConstant()),
                                       [](std::vector<Value> values) { return Value(NSArray(std::move(values))); }));
}

std::shared_ptr<const NSPredicate> anyPredicate(int depth) {
    const int kind = depth > 0 ? *rc::gen::inRange(0, 6) : 5;
    if (kind >= 3) {
        static const std::vector<std::string> operators = {
            "==", "!=", "<", "<=", ">", ">=", "IN", "BEGINSWITH", "ENDSWITH", "CONTAINS", "LIKE"};
        const std::string format = *rc::gen::element<std::string>("", "", "ANY ", "ALL ", "NONE ") + "%K " +
                                   *rc::gen::elementOf(operators) + *rc::gen::element<std::string>(" ", "[c] ") + "%@";
        return NSPredicate::predicateWithFormat(text(format), {*anyText(), *anyOperand()});
    }
    if (kind == 0) {
        return NSCompoundPredicate::notPredicateWithSubpredicate(anyPredicate(depth - 1));
    }
    NSCompoundPredicate::Subpredicates parts;
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
        parts.push_back(anyPredicate(depth - 1));
    }
    return kind == 1 ? NSCompoundPredicate::andPredicateWithSubpredicates(std::move(parts))
                     : NSCompoundPredicate::orPredicateWithSubpredicates(std::move(parts));
}

RC_GTEST_PROP(NSPredicateFormat, IsReadAsTheSameCondition, ()) {
    const auto written = anyPredicate(3);
    const auto read = NSPredicate::predicateWithFormat(written->predicateFormat());
    RC_ASSERT(read->keyPaths() == written->keyPaths());
    for (int round = 0; round < 3; ++round) {
        const Value answer = *anyOperand();
        const auto lookup = [&](const NSString& key) {
            return key.length() % 3 == 0 ? std::optional<Value>() : std::optional(answer);
        };
        RC_ASSERT(read->evaluateWithLookup(lookup) == written->evaluateWithLookup(lookup));
    }
}

RC_GTEST_PROP(NSPredicateFormat, ConstantIsReadAsItself, ()) {
    const Value constant = *anyOperand();
    const auto written = NSPredicate::predicateWithFormat("%@ == %K", {constant, "x"});
    const auto read = NSPredicate::predicateWithFormat(written->predicateFormat());
    RC_ASSERT(read->evaluateWithLookup([&](const NSString&) { return constant; }));
    RC_ASSERT(read->predicateFormat() == written->predicateFormat());
}

RC_GTEST_PROP(NSPredicateFormat, AnyTextIsAPredicateOrRaised, ()) {
    const NSString format = *anyText() + *rc::gen::element<NSString>(" = ", " IN ", " AND ", "(") + *anyText();
    try {
        const auto read = NSPredicate::predicateWithFormat(format, {"x", "y", "z"});
        RC_ASSERT(!read->predicateFormat().isEmpty());
    } catch (const NSInvalidArgumentException&) {
        RC_SUCCEED("it is none");
    }
}

RC_GTEST_PROP(NSSortDescriptor, OrdersAllValuesOfAllKinds, ()) {
    const auto value = rc::gen::element<std::optional<Value>>(
        std::nullopt, NSNull{}, 0, -1, 2.5, std::nan(""), true, "", "a", "B", NSArray{1}, NSDictionary(), NSData(),
        NSDate::dateWithTimeIntervalSince1970(0), NSDate::dateWithTimeIntervalSince1970(std::nan("")));
    const NSSortDescriptor descriptor("key", *rc::gen::arbitrary<bool>());
    const auto a = *value;
    const auto b = *value;
    const auto c = *value;
    const auto sign = [&](const auto& left, const auto& right) {
        return static_cast<int>(descriptor.compareValues(left, right));
    };
    RC_ASSERT(sign(a, b) == -sign(b, a));
    RC_ASSERT(sign(a, a) == 0);
    if (sign(a, b) <= 0 && sign(b, c) <= 0) {
        RC_ASSERT(sign(a, c) == std::min(sign(a, b), sign(b, c)));
    }
}

} // namespace
} // namespace qk
