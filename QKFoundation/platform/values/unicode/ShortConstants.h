// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The constants of AVX512Short.h in memory. They are defined in a file of their own, out of sight of the compiler: it
/// would make each of them anew out of an immediate, with two more instructions and on the unit of the processor that
/// is busy already.
namespace qk::unicode {

/// A register full of one value.
template <typename Lane, std::size_t Bytes = 32>
struct alignas(Bytes) Constant {
    std::array<Lane, Bytes / sizeof(Lane)> lanes;

    constexpr Constant() : lanes{} {}
    explicit constexpr Constant(std::uint64_t value) : lanes{} { lanes.fill(static_cast<Lane>(value)); }
};

struct ShortConstants {
    Constant<std::uint8_t, 16> byteC2{0xC2};
    Constant<std::uint8_t, 16> byteE0{0xE0};
    Constant<std::uint8_t, 16> byteF0{0xF0};
    Constant<std::uint16_t> payloads{0x3F7F};
    Constant<std::uint16_t> weights{0x4001};
    Constant<std::uint16_t> word3FF{0x3FF};
    Constant<std::uint16_t> wordD7C0{0xD7C0};
    Constant<std::uint16_t> wordD800{0xD800};
    Constant<std::uint16_t> wordDC00{0xDC00};
    Constant<std::uint16_t> starts{0xFFE0};
    Constant<std::uint16_t> overlong{0xE080};
    Constant<std::uint16_t> surrogate{0xEDA0};
    Constant<std::uint16_t> wordF800{0xF800};
    Constant<std::uint16_t> wordFC00{0xFC00};
    Constant<std::uint16_t> aboveF{0xFFF0};
    Constant<std::uint16_t> wordFF80{0xFF80};
    Constant<std::uint16_t> word3F00{0x3F00};
    Constant<std::uint16_t> word80C0{0x80C0};
    Constant<std::uint32_t> lanes40{0x40};
    Constant<std::uint32_t> lanes80{0x80};
    Constant<std::uint32_t> lanes3FF{0x3FF};
    Constant<std::uint32_t> lanes800{0x800};
    Constant<std::uint32_t> lanesC00{0xC00};
    Constant<std::uint32_t> lanesD7C0{0xD7C0};
    Constant<std::uint32_t> lanesD800{0xD800};
    Constant<std::uint32_t> lanesDC00{0xDC00};
    Constant<std::uint32_t> lanesFC00{0xFC00};
    Constant<std::uint32_t> lanesFFFF{0xFFFF};
    Constant<std::uint32_t> lanes10FFFF{0x10FFFF};
    Constant<std::uint32_t> lanesSurrogate{0xFFFFF800};
    Constant<std::uint32_t> pairOffset{0x35FDC00};
    Constant<std::uint32_t> lowBits{0x03FF0000};
    Constant<std::uint32_t> lowMark{0xDC000000};
    Constant<std::uint32_t> headersOf2{0x80C00000};
    Constant<std::uint32_t> headersOf3{0x8080E000};
    Constant<std::uint32_t> headersOfHigh{0x80F00000};
    Constant<std::uint32_t> headersOfLow{0x80800000};
    Constant<std::uint32_t> fieldBits{0x3F3F0F00};
    Constant<std::uint64_t> fields{0x20262C0000060C00};
    /// Each byte with the one before it.
    Constant<std::uint8_t> pairs{};
    /// The first bits, as many as the index.
    std::array<std::uint16_t, 17> masks{};

    constexpr ShortConstants() {
        for (std::size_t i = 0; i < pairs.lanes.size(); ++i) {
            pairs.lanes[i] = static_cast<std::uint8_t>(i < 2 ? 0 : i / 2 - i % 2);
        }
        for (std::size_t i = 0; i < masks.size(); ++i) {
            masks[i] = static_cast<std::uint16_t>((1U << i) - 1U);
        }
    }
};

[[gnu::visibility("hidden")]] extern const ShortConstants kShortConstants;

} // namespace qk::unicode
