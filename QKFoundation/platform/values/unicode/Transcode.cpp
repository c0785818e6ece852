// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Transcode.h"

namespace qk::unicode {
namespace {

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

std::size_t utf16ToUTF8Lossy(std::u16string_view in, char* out, char replacement) {
    return convertLossily(in, out, replacement, kernels().utf16ToUTF8);
}

std::size_t utf16ToUTF32Lossy(std::u16string_view in, char32_t* out, char32_t replacement) {
    return convertLossily(in, out, replacement, kernels().utf16ToUTF32);
}

} // namespace qk::unicode
