// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Runs of characters below the first mark, found four at a time on any processor.
namespace qk::unicode {

/// The first character that may compose with the one before it.
constexpr char16_t kFirstOfMarks = 0x300;

/// Four units side by side, which one operation looks at.
using FourUnits = std::uint64_t;
constexpr std::size_t kAtOnce = 4;

inline FourUnits fourAt(std::u16string_view in, std::size_t at) {
    FourUnits units = 0;
    std::memcpy(&units, in.data() + at, sizeof units);
    return units;
}

/// The top bit of each unit that is not below the first mark.
constexpr FourUnits notSimple(FourUnits units) {
    constexpr FourUnits kEach = 0x0001000100010001;
    constexpr FourUnits kTop = kEach * 0x8000;
    return (((units & ~kTop) + kEach * (0x8000 - kFirstOfMarks)) | units) & kTop;
}

/// How many of `units` stand in front of the first that is not below the first mark, or has one behind it.
constexpr std::size_t unitsBeforeMark(FourUnits units, FourUnits next) {
    const FourUnits stops = notSimple(units) | notSimple(next);
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(stops) : std::countl_zero(stops);
    return static_cast<std::size_t>(bits) / 16;
}

} // namespace qk::unicode
