// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

namespace qk::unicode {

/// How far a kernel came. It stops in front of the first malformed sequence, so `read` is the input's length exactly
/// when all of it was well-formed.
struct Progress {
    std::size_t read;
    std::size_t written;
};

/// One implementation of the conversions for one level of the processor. The capacities are those of Transcode.h;
/// lengths are those of the whole input, and a kernel handles every length, zero included.
struct Kernels {
    /// What tests and benchmarks call it: "scalar", "sse4.1", "avx2", "avx512".
    const char* name;

    Progress (*utf8ToUTF16)(const char* in, std::size_t length, char16_t* out);
    /// Writes nothing: `written` counts the UTF-16 units.
    Progress (*utf16LengthOfUTF8)(const char* in, std::size_t length);
    /// Precondition: well-formed input. Writes inside the exact length of the result.
    std::size_t (*validUTF8ToUTF16)(const char* in, std::size_t length, char16_t* out);

    Progress (*utf16ToUTF8)(const char16_t* in, std::size_t length, char* out);
    Progress (*utf8LengthOfUTF16)(const char16_t* in, std::size_t length);
    Progress (*utf16ToUTF32)(const char16_t* in, std::size_t length, char32_t* out);
    Progress (*utf32LengthOfUTF16)(const char16_t* in, std::size_t length);

    Progress (*utf32ToUTF16)(const char32_t* in, std::size_t length, char16_t* out);
    Progress (*utf16LengthOfUTF32)(const char32_t* in, std::size_t length);

    bool (*isASCII)(const char* in, std::size_t length);
    /// The length of the longest prefix whose units are all below `limit`, which is not 0.
    std::size_t (*prefixBelow)(const char16_t* in, std::size_t length, char16_t limit);
    /// The units of `in`, at most 64, that composition may touch (PlainUnits.h): bit i is unit i.
    std::uint64_t (*unplain)(const char16_t* in, std::size_t length);
};

namespace internal {

/// Not a function-local static: this is read for every conversion of a short string, and all threads that find it empty
/// compute the same answer.
[[gnu::visibility("hidden")]] extern constinit std::atomic<const Kernels*> gBestKernels;
[[nodiscard, gnu::cold]] const Kernels& resolveKernels();

} // namespace internal

/// The best kernels that this processor can run.
[[nodiscard]] inline const Kernels& kernels() {
    const Kernels* const best = internal::gBestKernels.load(std::memory_order_relaxed);
    return best != nullptr ? *best : internal::resolveKernels();
}

/// All kernels that this processor can run, the best first; the last is the portable one.
[[nodiscard]] std::span<const Kernels* const> supportedKernels();

extern const Kernels kScalarKernels;
#if defined(__x86_64__)
extern const Kernels kSSE41Kernels;
extern const Kernels kAVX2Kernels;
extern const Kernels kAVX512Kernels;
#endif

} // namespace qk::unicode
