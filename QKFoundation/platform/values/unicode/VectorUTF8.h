// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/VectorUTF8Short.h"

/// UTF-8 to UTF-16 with registers of 16 or 32 bytes: ASCII and runs in loops of their own, blocks for what is between,
/// and what is too short for them in pieces.
namespace qk::unicode {
namespace {

/// Copies ASCII, 64 bytes at a time. Returns how many, all of which there are. Long text is mostly this: in a loop
/// without the masks of the general one it takes half the time.
template <bool Write>
[[gnu::noinline]] std::size_t copyASCII(const char* in, std::size_t length, char16_t* out) {
    std::size_t at = 0;
    for (; length - at >= 64 && is64ASCII(in + at); at += 64) {
        if constexpr (Write) {
            writeASCII(in + at, out + at);
        }
    }
    return at;
}

constexpr std::size_t kLookBehind = 3;

/// Whether the block ended within a run.
inline bool endsInRun(const UTF8Masks& masks) {
    // Eight characters of three bytes in the last 24, or six of four.
    return _mm_popcnt_u64(masks.leads3 >> 40U) == 8 || _mm_popcnt_u64(masks.leads4 >> 40U) == 6;
}

/// Takes what there are of plain text and of runs. A character starts here.
template <bool Write>
[[gnu::noinline]] Progress copyUniform(const char* in, std::size_t length, char16_t* out, Progress at) {
    for (;;) {
        const std::size_t plain = copyASCII<Write>(in + at.read, length - at.read, Write ? out + at.written : nullptr);
        at = {at.read + plain, at.written + plain};
        if (at.read == length) {
            return at;
        }
        const Progress next = readRun<Write>(in, length, out, at);
        if (next.read == at.read) {
            return at;
        }
        at = next;
    }
}

/// As `copyUniform`, behind a block, if it is of use: it is not between words of mixed text, and must not be felt
/// there.
template <bool Write>
inline void tryUniform(const char* in, std::size_t length, char16_t* out, UTF8Progress& progress) {
    const bool isRun = endsInRun(progress.before);
    const bool isPlain = length - progress.at.read >= 64 && is64ASCII(in + progress.at.read);
    if (isRun || (isPlain && missing(progress.before) == 0)) {
        progress = {copyUniform<Write>(in, length, out, atBoundary(in, progress)), {}};
    }
}

/// The next bytes, 64 at most, as the last ones of a block, of which those before have been converted: there are
/// `64 + kLookBehind` up to their end. At the end of the text, eight bytes have room for eight units that way.
template <bool Validate, bool Write>
inline bool convertRest(const char* in, std::size_t count, char16_t* out, UTF8Progress& progress) {
    const std::size_t done = 64 - count;
    UTF8Progress next = progress;
    next.before.leads2 <<= done;
    next.before.leads3 <<= done;
    next.before.leads4 <<= done;
    if (!convertBlock<Validate, Write>(in + (progress.at.read + count - 64), out, next, ~std::uint64_t{0} << done)) {
        return false;
    }
    progress = next;
    return true;
}

/// What is less than a block, or has no room for the stores of one.
template <bool Validate, bool Write>
inline Progress readRest(const char* in, std::size_t length, char16_t* out, UTF8Progress progress) {
    const Progress& at = progress.at;
    while (length - at.read >= kLeastShortUTF8) {
        const std::size_t count = std::min<std::size_t>(length - at.read, 64);
        const std::size_t written = at.written;
        if constexpr (Write && !Validate) {
            // Nothing may be stored behind the units of the text.
            std::array<char16_t, 64 + 8> units;
            convertRest<Validate, Write>(in, count, units.data(), progress);
            std::memcpy(out + written, units.data(), (at.written - written) * sizeof(char16_t));
        } else if (!convertRest<Validate, Write>(in, count, Write ? out + written : nullptr, progress)) {
            break;
        }
    }
    return scalarUTF8ToUTF16<Write>(in, length, out, atBoundary(in, progress));
}

/// What is too short for blocks.
constexpr std::size_t kLittle = 64 + 2 * kLookBehind;

template <bool Validate, bool Write>
inline Progress readLittle(const char* in, std::size_t length, char16_t* out, Progress at) {
    const char* const from = in + at.read;
    const std::size_t left = length - at.read;
    Progress next;
    if constexpr (Validate && Write) {
        next = convertPieces(from, left, out + at.written);
    } else {
        std::array<char16_t, kLittle> units;
        next = convertPieces(from, left, units.data());
        if constexpr (Write) {
            std::copy_n(units.data(), next.written, out + at.written);
        }
    }
    return scalarUTF8ToUTF16<Write>(in, length, out, {at.read + next.read, at.written + next.written});
}

template <bool Validate, bool Write>
inline Progress readUTF8(const char* in, std::size_t length, char16_t* out) {
    // A store of eight units may go beyond the result's own end by seven: 24 bytes hold that many, three more may
    // belong to a character whose units are written.
    constexpr std::size_t kBytesForRoom = Write && !Validate ? 64 + 27 : 64;
    UTF8Progress progress{copyUniform<Write>(in, length, out, {0, 0}), {}};
    Progress& at = progress.at;
    if (length < kLittle || length - at.read <= kMostShortUTF8) {
        return readLittle<Validate, Write>(in, length, out, at);
    }
    while (at.read < kLookBehind) {
        const Decoded next = decodeUTF8(in + at.read, length - at.read);
        if (next.length == 0) {
            return at;
        }
        if constexpr (Write) {
            encodeUTF16(next.scalar, out + at.written);
        }
        at = {at.read + next.length, at.written + utf16LengthOf(next.scalar)};
    }
    while (length - at.read >= kBytesForRoom) {
        if (!convertBlock<Validate, Write>(in + at.read, Write ? out + at.written : nullptr, progress)) {
            return scalarUTF8ToUTF16<Write>(in, length, out, atBoundary(in, progress));
        }
        tryUniform<Write>(in, length, out, progress);
    }
    return readRest<Validate, Write>(in, length, out, progress);
}

} // namespace
} // namespace qk::unicode
