// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Normalization.h"

#include "tests/fuzz/unicode/Units.h"

/// Composed text is composed, and stays; and the quick answer is the one that composing gives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::unicode;
    fuzz::Exact<char16_t> in{data, size};
    const std::u16string_view text = in.first(in.size());
    std::u16string once;
    appendNFC(text, once);
    fuzz::require(isNFC(text) == (text == once));
    fuzz::require(isNFC(once));
    std::u16string twice;
    appendNFC(once, twice);
    fuzz::require(once == twice);
    return 0;
}
