// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include "tests/fuzz/unicode/Units.h"

/// Every kernel encodes units as the scalar one does, and the lossy forms replace lone surrogates alone.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::unicode;
    fuzz::Exact<char16_t> in{data, size};
    const bool isWellFormed = fuzz::compare(in, 3 * in.size(), &Kernels::utf16ToUTF8, &Kernels::utf8LengthOfUTF16);
    fuzz::compare(in, in.size(), &Kernels::utf16ToUTF32, &Kernels::utf32LengthOfUTF16);
    fuzz::Exact<char> bytes{3 * in.size()};
    const std::size_t length = utf16ToUTF8Lossy(in.first(in.size()), bytes.data(), '?');
    fuzz::require(isValidUTF8(bytes.first(length)));
    fuzz::require(!isWellFormed || utf8LengthOfUTF16(in.first(in.size())) == length);
    return 0;
}
