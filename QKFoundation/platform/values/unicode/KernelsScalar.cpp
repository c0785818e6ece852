// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Scalar.h"

namespace qk::unicode {
namespace {

Progress utf8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    return scalarUTF8ToUTF16<true>(in, length, out, {0, 0});
}

Progress utf16LengthOfUTF8(const char* in, std::size_t length) {
    return scalarUTF8ToUTF16<false>(in, length, nullptr, {0, 0});
}

std::size_t validUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    return scalarUTF8ToUTF16<true>(in, length, out, {0, 0}).written;
}

Progress utf16ToUTF8(const char16_t* in, std::size_t length, char* out) {
    return scalarUTF16ToUTF8<true>(in, length, out, {0, 0});
}

Progress utf8LengthOfUTF16(const char16_t* in, std::size_t length) {
    return scalarUTF16ToUTF8<false>(in, length, nullptr, {0, 0});
}

Progress utf16ToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    return scalarUTF16ToUTF32<true>(in, length, out, {0, 0});
}

Progress utf32LengthOfUTF16(const char16_t* in, std::size_t length) {
    return scalarUTF16ToUTF32<false>(in, length, nullptr, {0, 0});
}

Progress utf32ToUTF16(const char32_t* in, std::size_t length, char16_t* out) {
    return scalarUTF32ToUTF16<true>(in, length, out, {0, 0});
}

Progress utf16LengthOfUTF32(const char32_t* in, std::size_t length) {
    return scalarUTF32ToUTF16<false>(in, length, nullptr, {0, 0});
}

bool isASCII(const char* in, std::size_t length) {
    return scalarIsASCII(in, length, 0);
}

std::size_t prefixBelow(const char16_t* in, std::size_t length, char16_t limit) {
    return scalarPrefixBelow(in, length, limit, 0);
}

std::uint64_t unplain(const char16_t* in, std::size_t length) {
    return scalarUnplain(in, length);
}

} // namespace

constinit const Kernels kScalarKernels{
    .name = "scalar",
    .utf8ToUTF16 = utf8ToUTF16,
    .utf16LengthOfUTF8 = utf16LengthOfUTF8,
    .validUTF8ToUTF16 = validUTF8ToUTF16,
    .utf16ToUTF8 = utf16ToUTF8,
    .utf8LengthOfUTF16 = utf8LengthOfUTF16,
    .utf16ToUTF32 = utf16ToUTF32,
    .utf32LengthOfUTF16 = utf32LengthOfUTF16,
    .utf32ToUTF16 = utf32ToUTF16,
    .utf16LengthOfUTF32 = utf16LengthOfUTF32,
    .isASCII = isASCII,
    .prefixBelow = prefixBelow,
    .unplain = unplain,
};

} // namespace qk::unicode
