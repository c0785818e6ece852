// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSNumber.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <limits>

namespace qk {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

template <typename T>
int order(T left, T right) noexcept {
    return left < right ? -1 : left > right ? 1 : 0;
}

std::int64_t cutToSigned(double value) noexcept {
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kTwoTo63) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return value <= -kTwoTo63 ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

std::uint64_t cutToUnsigned(double value) noexcept {
    if (value >= kTwoTo64) {
        return std::numeric_limits<std::uint64_t>::max();
    }
    return value >= kTwoTo63 ? static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(cutToSigned(value));
}

/// An integer of -2^63 to 2^64 - 1: `bits`, below zero when `negative`.
struct WideInteger {
    std::uint64_t bits;
    bool negative;
};

int compareIntegers(WideInteger left, WideInteger right) noexcept {
    return left.negative != right.negative ? (left.negative ? -1 : 1) : order(left.bits, right.bits);
}

/// `integer` against `floating`, which is a number: by the whole part first, exactly, then by the fraction.
int compareMixed(WideInteger integer, double floating) noexcept {
    if (floating >= kTwoTo64) {
        return -1;
    }
    if (floating < -kTwoTo63) {
        return 1;
    }
    const double whole = std::floor(floating);
    const int byWhole = compareIntegers(integer, {cutToUnsigned(whole), whole < 0});
    return byWhole != 0 ? byWhole : order(whole, floating);
}

/// NaN is equal to itself and below all others.
int compareFloating(double left, double right) noexcept {
    return std::isnan(left) || std::isnan(right) ? order(!std::isnan(left), !std::isnan(right)) : order(left, right);
}

} // namespace

bool NSNumber::boolValue() const noexcept {
    return isFloating() ? bits_.floating != 0 : bits_.integer != 0;
}

std::int32_t NSNumber::intValue() const noexcept {
    return static_cast<std::int32_t>(integerValue());
}

std::uint32_t NSNumber::unsignedIntValue() const noexcept {
    return static_cast<std::uint32_t>(integerValue());
}

std::int64_t NSNumber::integerValue() const noexcept {
    return isFloating() ? cutToSigned(bits_.floating) : bits_.integer;
}

std::uint64_t NSNumber::unsignedIntegerValue() const noexcept {
    return isFloating() ? cutToUnsigned(bits_.floating) : static_cast<std::uint64_t>(bits_.integer);
}

double NSNumber::doubleValue() const noexcept {
    switch (kind_) {
    case Kind::Floating: return bits_.floating;
    case Kind::UnsignedInteger: return static_cast<double>(static_cast<std::uint64_t>(bits_.integer));
    case Kind::Boolean:
    case Kind::Integer: break;
    }
    return static_cast<double>(bits_.integer);
}

NSString NSNumber::stringValue() const {
    if (kind_ == Kind::UnsignedInteger) {
        return NSString::fromUnsignedInteger(unsignedIntegerValue());
    }
    if (!isFloating()) {
        return NSString::fromInteger(bits_.integer);
    }
    if (std::isnan(bits_.floating)) {
        return "nan"; // a sign would say nothing
    }
    char text[32];
    const auto end =
        std::to_chars(std::begin(text), std::end(text), bits_.floating, std::chars_format::general, 16).ptr;
    return NSString::fromUTF8Lossy({text, static_cast<std::size_t>(end - text)});
}

NSComparisonResult NSNumber::compare(const NSNumber& other) const noexcept {
    const auto wide = [](const NSNumber& number) {
        return WideInteger{number.unsignedIntegerValue(),
                           number.kind_ != Kind::UnsignedInteger && number.bits_.integer < 0};
    };
    int result = 0;
    if (isFloating() && other.isFloating()) {
        result = compareFloating(bits_.floating, other.bits_.floating);
    } else if (isFloating()) {
        result = std::isnan(bits_.floating) ? -1 : -compareMixed(wide(other), bits_.floating);
    } else if (other.isFloating()) {
        result = std::isnan(other.bits_.floating) ? 1 : compareMixed(wide(*this), other.bits_.floating);
    } else {
        result = compareIntegers(wide(*this), wide(other));
    }
    return static_cast<NSComparisonResult>(result);
}

std::size_t NSNumber::hash() const noexcept {
    if (!isFloating()) {
        return std::hash<std::uint64_t>()(static_cast<std::uint64_t>(bits_.integer));
    }
    const double value = bits_.floating;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= -kTwoTo63 && value < kTwoTo64 && std::floor(value) == value) {
        return std::hash<std::uint64_t>()(cutToUnsigned(value)); // as the integer that it equals
    }
    return std::hash<double>()(value);
}

} // namespace qk
