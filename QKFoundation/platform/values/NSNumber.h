// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace qk {

/// A number that remembers its kind: boolean, integer (64 bits, signed or unsigned) or floating.
///
/// Equality, order and hash go by value, whatever the kinds: true equals 1 equals 1.0, and -0.0 equals 0. An integer is
/// compared with a floating number exactly, not rounded to one. NaN equals only NaN and lies below every other number.
/// Threads: a plain value.
class QK_EXPORT NSNumber {
public:
    enum class Kind : std::uint8_t { Boolean, Integer, UnsignedInteger, Floating };

    /// A number of `value`'s own kind. An unsigned integer that a signed one can hold becomes a signed one: the two are
    /// not told apart.
    template <typename T>
    requires std::is_arithmetic_v<T>
    explicit NSNumber(T value) noexcept {
        if constexpr (std::same_as<T, bool>) {
            kind_ = Kind::Boolean;
            bits_.integer = value ? 1 : 0;
        } else if constexpr (std::floating_point<T>) {
            kind_ = Kind::Floating;
            bits_.floating = static_cast<double>(value);
        } else if constexpr (std::is_unsigned_v<T> && sizeof(T) == sizeof(std::uint64_t)) {
            kind_ = (value >> 63U) != 0 ? Kind::UnsignedInteger : Kind::Integer;
            bits_.integer = static_cast<std::int64_t>(value);
        } else {
            kind_ = Kind::Integer;
            bits_.integer = static_cast<std::int64_t>(value);
        }
    }

    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    [[nodiscard]] bool isBoolean() const noexcept { return kind_ == Kind::Boolean; }
    [[nodiscard]] bool isFloating() const noexcept { return kind_ == Kind::Floating; }

    /// `boolValue`. Whether the number itself is not 0: 0.5, 256 and 4294967296 are true, NaN is.
    [[nodiscard]] bool boolValue() const noexcept;

    /// `intValue`. The low 32 bits of an integer (4294967297 gives 1); a floating number is cut towards zero and stops
    /// at the limits of 64 bits first; NaN gives 0.
    [[nodiscard]] std::int32_t intValue() const noexcept;

    /// `unsignedIntValue`. The low 32 bits, read unsigned.
    [[nodiscard]] std::uint32_t unsignedIntValue() const noexcept;

    /// `integerValue`, `longLongValue`. An unsigned number from 2^63 on wraps; a floating one is cut towards zero and
    /// stops at the limits.
    [[nodiscard]] std::int64_t integerValue() const noexcept;

    /// `unsignedIntegerValue`. A negative number wraps; a floating one is cut towards zero, below zero as
    /// `integerValue` does it and then wrapped, and stops at the upper limit; NaN gives 0.
    [[nodiscard]] std::uint64_t unsignedIntegerValue() const noexcept;

    /// `doubleValue`. The nearest double.
    [[nodiscard]] double doubleValue() const noexcept;

    /// `stringValue`. Decimal digits of an integer, "1" or "0" of a boolean, up to 16 significant digits of a floating
    /// number (0.1 is "0.1", 100.0 is "100", 1e20 is "1e+20"; "inf", "-inf", "nan").
    [[nodiscard]] NSString stringValue() const;

    /// `compare:`. The order of the values.
    [[nodiscard]] NSComparisonResult compare(const NSNumber& other) const noexcept;

    [[nodiscard]] std::size_t hash() const noexcept;

    [[nodiscard]] friend bool operator==(const NSNumber& left, const NSNumber& right) noexcept {
        return left.compare(right) == NSComparisonResult::NSOrderedSame;
    }

private:
    Kind kind_;
    union {
        std::int64_t integer; // the bits of an unsigned integer too
        double floating;
    } bits_;
};

} // namespace qk
