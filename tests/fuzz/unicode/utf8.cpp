// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include "tests/fuzz/unicode/Units.h"

/// Every kernel decodes bytes as the scalar one does, and what is well-formed comes back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::unicode;
    fuzz::Exact<char> in{data, size};
    if (!fuzz::compare(in, in.size(), &Kernels::utf8ToUTF16, &Kernels::utf16LengthOfUTF8)) {
        return 0;
    }
    const std::size_t length = kScalarKernels.utf16LengthOfUTF8(in.data(), in.size()).written;
    for (const Kernels* const kernel : supportedKernels()) {
        fuzz::Exact<char16_t> units{length};
        fuzz::require(kernel->validUTF8ToUTF16(in.data(), in.size(), units.data()) == length);
        fuzz::Exact<char> bytes{3 * length};
        const Progress back = kernel->utf16ToUTF8(units.data(), length, bytes.data());
        fuzz::require(back.read == length && bytes.first(back.written) == in.first(in.size()));
    }
    return 0;
}
