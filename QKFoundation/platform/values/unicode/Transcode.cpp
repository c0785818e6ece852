// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include "QKFoundation/platform/values/unicode/Kernels.h"
#include "QKFoundation/platform/values/unicode/ShortASCII.h"

namespace qk::unicode {
namespace {

std::optional<std::size_t> complete(Progress progress, std::size_t length) {
    if (progress.read != length) {
        return std::nullopt;
    }
    return progress.written;
}

/// Runs `convert` over all of `in`, with one `replacement` for each unit that it stops at.
template <typename Out>
std::size_t convertLossily(std::u16string_view in, Out* out, Out replacement,
                           Progress (*convert)(const char16_t*, std::size_t, Out*)) {
    std::size_t written = 0;
    for (;;) {
        const Progress progress = convert(in.data(), in.size(), out + written);
        written += progress.written;
        if (progress.read == in.size()) {
            return written;
        }
        out[written++] = replacement;
        in.remove_prefix(progress.read + 1);
    }
}

} // namespace

std::optional<std::size_t> utf8ToUTF16(std::string_view in, char16_t* out) {
    if (shortASCIIToUTF16(in.data(), in.size(), out)) {
        return in.size();
    }
    return complete(kernels().utf8ToUTF16(in.data(), in.size(), out), in.size());
}

std::optional<std::size_t> utf16LengthOfUTF8(std::string_view in) {
    return complete(kernels().utf16LengthOfUTF8(in.data(), in.size()), in.size());
}

std::size_t validUTF8ToUTF16(std::string_view in, char16_t* out) {
    if (shortASCIIToUTF16(in.data(), in.size(), out)) {
        return in.size();
    }
    return kernels().validUTF8ToUTF16(in.data(), in.size(), out);
}

std::optional<std::size_t> utf16ToUTF8(std::u16string_view in, char* out) {
    if (shortASCIIToUTF8(in.data(), in.size(), out)) {
        return in.size();
    }
    return complete(kernels().utf16ToUTF8(in.data(), in.size(), out), in.size());
}

std::optional<std::size_t> utf8LengthOfUTF16(std::u16string_view in) {
    return complete(kernels().utf8LengthOfUTF16(in.data(), in.size()), in.size());
}

std::size_t utf16ToUTF8Lossy(std::u16string_view in, char* out, char replacement) {
    return convertLossily(in, out, replacement, kernels().utf16ToUTF8);
}

std::optional<std::size_t> utf32ToUTF16(std::u32string_view in, char16_t* out) {
    return complete(kernels().utf32ToUTF16(in.data(), in.size(), out), in.size());
}

std::optional<std::size_t> utf16LengthOfUTF32(std::u32string_view in) {
    return complete(kernels().utf16LengthOfUTF32(in.data(), in.size()), in.size());
}

std::optional<std::size_t> utf16ToUTF32(std::u16string_view in, char32_t* out) {
    if (shortASCIIToUTF32(in.data(), in.size(), out)) {
        return in.size();
    }
    return complete(kernels().utf16ToUTF32(in.data(), in.size(), out), in.size());
}

std::size_t utf16ToUTF32Lossy(std::u16string_view in, char32_t* out, char32_t replacement) {
    return convertLossily(in, out, replacement, kernels().utf16ToUTF32);
}

std::optional<std::size_t> utf32LengthOfUTF16(std::u16string_view in) {
    return complete(kernels().utf32LengthOfUTF16(in.data(), in.size()), in.size());
}

bool isASCII(std::string_view in) {
    return kernels().isASCII(in.data(), in.size());
}

bool isValidUTF8(std::string_view in) {
    return kernels().utf16LengthOfUTF8(in.data(), in.size()).read == in.size();
}

} // namespace qk::unicode
