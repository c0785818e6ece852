// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/unicode/Units.h"

/// Every kernel encodes values as the scalar one does, and what is well-formed comes back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::unicode;
    fuzz::Exact<char32_t> in{data, size};
    if (!fuzz::compare(in, 2 * in.size(), &Kernels::utf32ToUTF16, &Kernels::utf16LengthOfUTF32)) {
        return 0;
    }
    fuzz::Exact<char16_t> units{2 * in.size()};
    const std::size_t length = kernels().utf32ToUTF16(in.data(), in.size(), units.data()).written;
    fuzz::Exact<char32_t> back{length};
    const Progress progress = kernels().utf16ToUTF32(units.data(), length, back.data());
    fuzz::require(progress.read == length && back.first(progress.written) == in.first(in.size()));
    return 0;
}
