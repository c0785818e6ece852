// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/VectorUTF8Blocks.h"
#include "QKFoundation/platform/values/unicode/VectorUTF8Runs.h"

#include <algorithm>

/// UTF-8 to UTF-16 with registers of 16 bytes: ASCII and runs in loops of their own, and blocks for what is between.
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

/// Where a conversion by blocks is, and the masks of the block before.
struct UTF8Progress {
    Progress at;
    UTF8Masks before{};
};

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
        progress = {copyUniform<Write>(in, length, out, atBoundary(in, progress.at, progress.before)), {}};
    }
}

/// What is less than a block, or has no room for the stores of one: through memory of our own, filled up with zeros.
template <bool Validate, bool Write>
inline Progress readRest(const char* in, std::size_t length, char16_t* out, UTF8Progress progress) {
    Progress& at = progress.at;
    while (at.read < length) {
        const std::size_t count = std::min<std::size_t>(length - at.read, 64);
        const std::size_t behind = std::min(at.read, kLookBehind);
        std::array<char, kLookBehind + 64> block{};
        std::array<char16_t, 64 + 8> units;
        std::memcpy(block.data() + kLookBehind - behind, in + at.read - behind, behind + count);
        const Progress start = at;
        if (!convertBlock<Validate, Write>(block.data() + kLookBehind, units.data(), at, progress.before)) {
            break;
        }
        at = {start.read + count, at.written - (64 - count)};
        if constexpr (Write) {
            std::memcpy(out + start.written, units.data(), (at.written - start.written) * sizeof(char16_t));
        }
    }
    return scalarUTF8ToUTF16<Write>(in, length, out, atBoundary(in, at, progress.before));
}

template <bool Validate, bool Write>
inline Progress readUTF8(const char* in, std::size_t length, char16_t* out) {
    // A store of eight units may go beyond the result's own end by seven: 24 bytes hold that many, three more may
    // belong to a character whose units are written.
    constexpr std::size_t kBytesForRoom = Write && !Validate ? 64 + 27 : 64;
    constexpr std::size_t kShortest = 24;
    if (length < kShortest) {
        return scalarUTF8ToUTF16<Write>(in, length, out, {0, 0});
    }
    UTF8Progress progress{copyUniform<Write>(in, length, out, {0, 0}), {}};
    Progress& at = progress.at;
    if (length - at.read >= kBytesForRoom + 2 * kLookBehind) {
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
            if (!convertBlock<Validate, Write>(in + at.read, Write ? out + at.written : nullptr, at, progress.before)) {
                return scalarUTF8ToUTF16<Write>(in, length, out, atBoundary(in, at, progress.before));
            }
            tryUniform<Write>(in, length, out, progress);
        }
    }
    return readRest<Validate, Write>(in, length, out, progress);
}

} // namespace
} // namespace qk::unicode
