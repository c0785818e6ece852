// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"

#include <immintrin.h>

/// UTF-8 to UTF-16 for processors with AVX-512 VBMI2, 64 bytes at a time and without regard to where characters begin.
///
/// The masks of the bytes' classes, shifted, say where continuations must stand and where a unit is due: at the last
/// byte of each character, and for one of four bytes at its third byte (high surrogate) as well. At such a byte it and
/// its two predecessors hold all bits of the unit. So the block and its two shifted copies are compressed to those
/// bytes, widened and put together. What a cut character owes to the next block is carried over as bits.
namespace qk::unicode {
namespace {

constexpr std::uint64_t allBelow(std::size_t count) {
    return count < 64 ? (std::uint64_t{1} << count) - 1 : ~std::uint64_t{0};
}

/// The classes of a block's bytes; bit i is byte i.
struct UTF8Masks {
    std::uint64_t high = 0;          // not ASCII
    std::uint64_t continuations = 0; // 80 to BF
    std::uint64_t leads2 = 0;        // C2 to FF: a character of at least two bytes
    std::uint64_t leads3 = 0;        // E0 to FF
    std::uint64_t leads4 = 0;        // F0 to FF
};

/// `mask` moved up by `distance`, with what the block before moved out of its own.
inline std::uint64_t movedUp(std::uint64_t mask, std::uint64_t before, unsigned distance) {
    return mask << distance | before >> (64 - distance);
}

/// The continuations that the characters cut at the end of a block still miss.
inline std::uint64_t missing(const UTF8Masks& masks) {
    return masks.leads2 >> 63U | masks.leads3 >> 62U | masks.leads4 >> 61U;
}

inline std::uint64_t atLeast(__m512i bytes, int limit) {
    return _mm512_cmpge_epu8_mask(bytes, _mm512_set1_epi8(static_cast<char>(limit)));
}

/// Where the second byte of a character is out of the range that its lead leaves (overlong forms, surrogates, values
/// above U+10FFFF, leads that do not exist). `previous` is 0 where `seconds` is not set.
inline bool hasBadSecond(__m512i bytes, __m512i previous, std::uint64_t seconds) {
    // Indexed by the low six bits of the lead; C0 and C1 never get here. The lowest second byte, and how many follow
    // it.
    const __m512i lowest =
        _mm512_set_epi64(-1, -0x0000007F7F7F7F70LL, -0x7F7F7F7F7F7F7F80LL, -0x7F7F7F7F7F7F7F60LL, -0x7F7F7F7F7F7F7F80LL,
                         -0x7F7F7F7F7F7F7F80LL, -0x7F7F7F7F7F7F7F80LL, -0x7F7F7F7F7F7F7F80LL);
    const __m512i more =
        _mm512_set_epi64(0, 0x0000000F3F3F3F2FLL, 0x3F3F1F3F3F3F3F3FLL, 0x3F3F3F3F3F3F3F1FLL, 0x3F3F3F3F3F3F3F3FLL,
                         0x3F3F3F3F3F3F3F3FLL, 0x3F3F3F3F3F3F3F3FLL, 0x3F3F3F3F3F3F3F3FLL);
    const __m512i above = _mm512_sub_epi8(bytes, _mm512_permutexvar_epi8(previous, lowest));
    return _mm512_mask_cmpgt_epu8_mask(seconds, above, _mm512_permutexvar_epi8(previous, more)) != 0;
}

/// Stores the first `count` of 32 units; all of them, if the caller knows that there is room.
template <bool Room>
inline void storeUnits(char16_t* out, __m512i units, std::size_t count) {
    if constexpr (Room) {
        _mm512_storeu_si512(out, units);
    } else {
        _mm512_mask_storeu_epi16(out, static_cast<__mmask32>(allBelow(count)), units);
    }
}

template <bool Room>
inline void storeASCII(char16_t* out, __m512i bytes, std::size_t count) {
    storeUnits<Room>(out, _mm512_cvtepu8_epi16(_mm512_castsi512_si256(bytes)), count);
    if (Room || count > 32) {
        storeUnits<Room>(out + 32, _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(bytes, 1)), count - 32);
    }
}

/// 32 units out of the compressed last, second last and third last bytes.
template <bool Three>
inline __m512i joinBytes(__m256i last, __m256i second, __m256i third) {
    const __m512i middle = _mm512_slli_epi16(_mm512_cvtepu8_epi16(second), 6);
    // (middle & 0FC0) | last
    const __m512i low = _mm512_ternarylogic_epi64(middle, _mm512_set1_epi16(0x0FC0), _mm512_cvtepu8_epi16(last), 0xEA);
    if constexpr (Three) {
        return _mm512_or_si512(low, _mm512_slli_epi16(_mm512_cvtepu8_epi16(third), 12));
    } else {
        return low;
    }
}

/// Makes surrogates of the units where a character of four bytes was put together as if it had three.
inline __m512i fixSurrogates(__m512i units, __mmask32 highs, __mmask32 lows) {
    const __m512i low =
        _mm512_ternarylogic_epi64(units, _mm512_set1_epi16(0x3FF), _mm512_set1_epi16(static_cast<short>(0xDC00)), 0xEA);
    const __m512i high = _mm512_add_epi16(_mm512_srli_epi16(units, 4), _mm512_set1_epi16(static_cast<short>(0xD7C0)));
    return _mm512_mask_mov_epi16(_mm512_mask_mov_epi16(units, lows, low), highs, high);
}

/// The compressed bytes of a block, and which units become surrogates.
struct UTF8Streams {
    __m512i last;
    __m512i second;
    __m512i third;
    std::uint64_t highs;
    std::uint64_t lows;
};

template <bool Three, bool Room>
inline void storeStreams(const UTF8Streams& streams, std::size_t count, char16_t* out) {
    __m512i units = joinBytes<Three>(_mm512_castsi512_si256(streams.last), _mm512_castsi512_si256(streams.second),
                                     _mm512_castsi512_si256(streams.third));
    if (Three && streams.highs + streams.lows != 0) {
        units = fixSurrogates(units, static_cast<__mmask32>(streams.highs), static_cast<__mmask32>(streams.lows));
    }
    storeUnits<Room>(out, units, count);
    if (count > 32) {
        units =
            joinBytes<Three>(_mm512_extracti64x4_epi64(streams.last, 1), _mm512_extracti64x4_epi64(streams.second, 1),
                             _mm512_extracti64x4_epi64(streams.third, 1));
        if (Three && streams.highs + streams.lows != 0) {
            units = fixSurrogates(units, static_cast<__mmask32>(streams.highs >> 32U),
                                  static_cast<__mmask32>(streams.lows >> 32U));
        }
        storeUnits<Room>(out + 32, units, count - 32);
    }
}

/// The state of one conversion. `Write` false counts only; `Validate` false trusts the input.
template <bool Validate, bool Write>
class UTF8Reader {
public:
    UTF8Reader(const char* in, char16_t* out) : in_{in}, out_{out} {}

    /// Converts the next `count` bytes, `there` being the mask of them; false for malformed ones, which changes
    /// nothing.
    template <bool Room>
    bool convert(std::uint64_t there, std::size_t count) {
        const char* const in = in_ + at_.read;
        const __m512i bytes = Room ? _mm512_loadu_si512(in) : _mm512_maskz_loadu_epi8(there, in);
        UTF8Masks masks;
        masks.high = _mm512_movepi8_mask(bytes);
        if ((masks.high | missing(before_)) == 0) {
            if constexpr (Write) {
                storeASCII<Room>(out_ + at_.written, bytes, count);
            }
            at_.read += count;
            at_.written += count;
            before_ = {};
            return true;
        }
        masks.continuations = _mm512_cmplt_epi8_mask(bytes, _mm512_set1_epi8(-0x40));
        masks.leads2 = atLeast(bytes, 0xC2);
        masks.leads3 = atLeast(bytes, 0xE0);
        if ((masks.leads3 | before_.leads3) == 0) {
            return convertMasked<Room, false>(bytes, masks, there, count);
        }
        masks.leads4 = atLeast(bytes, 0xF0);
        return convertMasked<Room, true>(bytes, masks, there, count);
    }

    /// Behind a block of ASCII, copies what follows of it, 64 bytes at a time.
    void copyASCII(std::size_t length) {
        if (before_.high != 0) {
            return;
        }
        // The first step ends with a line of the cache: a store that crosses two takes twice as long.
        std::size_t step = 64 - reinterpret_cast<std::uintptr_t>(out_ + at_.written) % 64 / sizeof(char16_t);
        for (; length - at_.read >= 64; step = 64) {
            const __m512i bytes = _mm512_loadu_si512(in_ + at_.read);
            if (_mm512_movepi8_mask(bytes) != 0) {
                return;
            }
            storeASCII<true>(out_ + at_.written, bytes, 64);
            at_ = {at_.read + step, at_.written + step};
        }
    }

    [[nodiscard]] std::size_t read() const { return at_.read; }

    /// How far it came, at a boundary of characters.
    [[nodiscard]] Progress progress() const {
        Progress at = at_;
        if (at.read == 0 || missing(before_) == 0) {
            return at;
        }
        if (byteAt(in_, at.read - 1) >= 0xC0) {
            at.read -= 1;
        } else if (byteAt(in_, at.read - 2) >= 0xE0) {
            at.read -= 2;
        } else {
            at.read -= 3;
            at.written -= 1;
        }
        return at;
    }

private:
    template <bool Room, bool Three>
    bool convertMasked(__m512i bytes, const UTF8Masks& masks, std::uint64_t there, std::size_t count) {
        const std::uint64_t seconds = movedUp(masks.leads2, before_.leads2, 1);
        const std::uint64_t thirds = Three ? movedUp(masks.leads3, before_.leads3, 2) : 0;
        const std::uint64_t fourths = Three ? movedUp(masks.leads4, before_.leads4, 3) : 0;
        if constexpr (Validate) {
            if ((seconds | thirds | fourths) != masks.continuations ||
                (masks.continuations | masks.leads2) != masks.high) {
                return false;
            }
        }
        __m512i previous{};
        if constexpr (Write || (Validate && Three)) {
            previous = _mm512_maskz_loadu_epi8(masks.continuations, in_ + at_.read - 1);
        }
        if constexpr (Validate && Three) {
            if (hasBadSecond(bytes, previous, seconds)) {
                return false;
            }
        }
        // All but leads, and second bytes that are not the last or last but one.
        const std::uint64_t silent = Three ? masks.leads2 | movedUp(masks.leads3, before_.leads3, 1) : masks.leads2;
        const std::uint64_t units = there & ~silent;
        const auto unitCount = static_cast<std::size_t>(_mm_popcnt_u64(units));
        if constexpr (Write) {
            UTF8Streams streams{};
            streams.last = _mm512_maskz_compress_epi8(units, _mm512_and_si512(bytes, _mm512_set1_epi8(0x7F)));
            streams.second = _mm512_maskz_compress_epi8(units, previous);
            if constexpr (Three) {
                const __m512i leads = _mm512_maskz_loadu_epi8(thirds, in_ + at_.read - 2);
                streams.third = _mm512_maskz_compress_epi8(units, leads);
                const std::uint64_t highs = movedUp(masks.leads4, before_.leads4, 2);
                if ((highs | fourths) != 0) {
                    streams.highs = _pext_u64(highs, units);
                    streams.lows = _pext_u64(fourths, units);
                }
            }
            storeStreams<Three, Room>(streams, unitCount, out_ + at_.written);
        }
        at_.read += count;
        at_.written += unitCount;
        before_ = masks;
        return true;
    }

    const char* in_;
    char16_t* out_;
    Progress at_{0, 0};
    UTF8Masks before_;
};

template <bool Validate, bool Write>
inline Progress readUTF8(const char* in, std::size_t length, char16_t* out) {
    // So many bytes are at least 64 units, those of a character that was cut before them not counted. Only the writer
    // of an exact result needs to know; elsewhere a byte of input is a unit of room.
    constexpr std::size_t kBytesForRoom = Write && !Validate ? 3 * 64 + 3 : 64;
    UTF8Reader<Validate, Write> reader{in, out};
    while (length - reader.read() >= kBytesForRoom) {
        if (!reader.template convert<true>(~std::uint64_t{0}, 64)) {
            return reader.progress();
        }
        if constexpr (Write) {
            reader.copyASCII(length);
        }
    }
    while (reader.read() < length) {
        const std::size_t left = length - reader.read();
        const std::size_t count = left < 64 ? left : 64;
        if (!reader.template convert<false>(allBelow(count), count)) {
            return reader.progress();
        }
    }
    return reader.progress();
}

} // namespace
} // namespace qk::unicode
