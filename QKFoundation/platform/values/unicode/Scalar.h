// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Kernels.h"
#include "QKFoundation/platform/values/unicode/PlainUnits.h"

#include <cstdint>
#include <cstring>

/// The conversions one character at a time: the reference for the wide kernels, and what they finish their tails with.
///
/// Everything has internal linkage on purpose. Each kernel is compiled for another processor, and a shared inline
/// function might come out of the linker in the form that only the newest of them can run.
namespace qk::unicode {
namespace {

constexpr char32_t kMaxScalar = 0x10FFFF;

constexpr bool isHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00U) == 0xD800U;
}
constexpr bool isLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00U) == 0xDC00U;
}
constexpr bool isSurrogate(char32_t unit) {
    return (unit & 0xFFFFF800U) == 0xD800U;
}
constexpr bool isScalarValue(char32_t value) {
    return value <= kMaxScalar && !isSurrogate(value);
}
constexpr char32_t joinSurrogates(char32_t high, char32_t low) {
    return (high << 10U) + low - 0x35FDC00U;
}
constexpr char16_t highSurrogateOf(char32_t scalar) {
    return static_cast<char16_t>(0xD7C0U + (scalar >> 10U));
}
constexpr char16_t lowSurrogateOf(char32_t scalar) {
    return static_cast<char16_t>(0xDC00U | (scalar & 0x3FFU));
}

/// One decoded character and the code units it took; `length` 0 for a malformed sequence.
struct Decoded {
    char32_t scalar;
    unsigned length;
};

inline std::uint8_t byteAt(const char* in, std::size_t index) {
    return static_cast<std::uint8_t>(in[index]);
}

inline bool isContinuation(std::uint8_t byte) {
    return (byte & 0xC0U) == 0x80U;
}

/// Decodes the character at the head of `in`, of which `available` (at least one) bytes are there.
inline Decoded decodeUTF8(const char* in, std::size_t available) {
    const char32_t lead = byteAt(in, 0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    if (lead < 0xC2 || lead > 0xF4 || available < 2 || !isContinuation(byteAt(in, 1))) {
        return {0, 0};
    }
    const char32_t second = byteAt(in, 1) & 0x3FU;
    if (lead < 0xE0) {
        return {(lead & 0x1FU) << 6U | second, 2};
    }
    if (available < 3 || !isContinuation(byteAt(in, 2))) {
        return {0, 0};
    }
    const char32_t third = byteAt(in, 2) & 0x3FU;
    if (lead < 0xF0) {
        const char32_t scalar = (lead & 0xFU) << 12U | second << 6U | third;
        return {scalar, scalar >= 0x800 && !isSurrogate(scalar) ? 3U : 0U};
    }
    if (available < 4 || !isContinuation(byteAt(in, 3))) {
        return {0, 0};
    }
    const char32_t scalar = (lead & 7U) << 18U | second << 12U | third << 6U | (byteAt(in, 3) & 0x3FU);
    return {scalar, scalar >= 0x10000 && scalar <= kMaxScalar ? 4U : 0U};
}

/// Decodes the character at the head of `in`, of which `available` (at least one) units are there.
inline Decoded decodeUTF16(const char16_t* in, std::size_t available) {
    const char32_t unit = in[0];
    if (!isSurrogate(unit)) {
        return {unit, 1};
    }
    if (isHighSurrogate(unit) && available > 1 && isLowSurrogate(in[1])) {
        return {joinSurrogates(unit, in[1]), 2};
    }
    return {0, 0};
}

constexpr unsigned utf8LengthOf(char32_t scalar) {
    return scalar < 0x80 ? 1U : scalar < 0x800 ? 2U : scalar < 0x10000 ? 3U : 4U;
}

constexpr unsigned utf16LengthOf(char32_t scalar) {
    return scalar < 0x10000 ? 1U : 2U;
}

inline unsigned encodeUTF8(char32_t scalar, char* out) {
    const unsigned length = utf8LengthOf(scalar);
    if (length == 1) {
        out[0] = static_cast<char>(scalar);
        return 1;
    }
    for (unsigned i = length - 1; i > 0; --i) {
        out[i] = static_cast<char>(0x80U | (scalar & 0x3FU));
        scalar >>= 6U;
    }
    out[0] = static_cast<char>((0xF00U >> length & 0xFFU) | scalar);
    return length;
}

inline unsigned encodeUTF16(char32_t scalar, char16_t* out) {
    if (scalar < 0x10000) {
        out[0] = static_cast<char16_t>(scalar);
        return 1;
    }
    out[0] = highSurrogateOf(scalar);
    out[1] = lowSurrogateOf(scalar);
    return 2;
}

/// Whether the eight bytes at `in` are all ASCII.
inline bool eightAreASCII(const char* in) {
    std::uint64_t word = 0;
    std::memcpy(&word, in, sizeof word);
    return (word & 0x8080808080808080U) == 0;
}

/// Converts from `at` on. `Write` false only counts.
template <bool Write>
Progress scalarUTF8ToUTF16(const char* in, std::size_t length, char16_t* out, Progress at) {
    while (at.read < length) {
        if (length - at.read >= 8 && eightAreASCII(in + at.read)) {
            if constexpr (Write) {
                for (std::size_t i = 0; i < 8; ++i) {
                    out[at.written + i] = byteAt(in, at.read + i);
                }
            }
            at.read += 8;
            at.written += 8;
            continue;
        }
        const Decoded next = decodeUTF8(in + at.read, length - at.read);
        if (next.length == 0) {
            break;
        }
        if constexpr (Write) {
            encodeUTF16(next.scalar, out + at.written);
        }
        at.read += next.length;
        at.written += utf16LengthOf(next.scalar);
    }
    return at;
}

template <bool Write>
Progress scalarUTF16ToUTF8(const char16_t* in, std::size_t length, char* out, Progress at) {
    while (at.read < length) {
        const Decoded next = decodeUTF16(in + at.read, length - at.read);
        if (next.length == 0) {
            break;
        }
        if constexpr (Write) {
            encodeUTF8(next.scalar, out + at.written);
        }
        at.read += next.length;
        at.written += utf8LengthOf(next.scalar);
    }
    return at;
}

template <bool Write>
Progress scalarUTF16ToUTF32(const char16_t* in, std::size_t length, char32_t* out, Progress at) {
    while (at.read < length) {
        const Decoded next = decodeUTF16(in + at.read, length - at.read);
        if (next.length == 0) {
            break;
        }
        if constexpr (Write) {
            out[at.written] = next.scalar;
        }
        at.read += next.length;
        ++at.written;
    }
    return at;
}

template <bool Write>
Progress scalarUTF32ToUTF16(const char32_t* in, std::size_t length, char16_t* out, Progress at) {
    while (at.read < length && isScalarValue(in[at.read])) {
        if constexpr (Write) {
            encodeUTF16(in[at.read], out + at.written);
        }
        at.written += utf16LengthOf(in[at.read]);
        ++at.read;
    }
    return at;
}

inline std::size_t scalarPrefixBelow(const char16_t* in, std::size_t length, char16_t limit, std::size_t at) {
    while (at < length && in[at] < limit) {
        ++at;
    }
    return at;
}

inline std::uint64_t scalarUnplain(const char16_t* in, std::size_t length) {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < length; ++i) {
        mask |= static_cast<std::uint64_t>(!isPlain(in[i])) << i;
    }
    return mask;
}

inline bool scalarIsASCII(const char* in, std::size_t length, std::size_t at) {
    for (; length - at >= 8; at += 8) {
        if (!eightAreASCII(in + at)) {
            return false;
        }
    }
    unsigned seen = 0;
    for (; at < length; ++at) {
        seen |= byteAt(in, at);
    }
    return seen < 0x80;
}

} // namespace
} // namespace qk::unicode
