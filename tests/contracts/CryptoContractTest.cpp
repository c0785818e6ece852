// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace qk::tests {
namespace {

using platform::CommonCrypto;

class CryptoContract : public Contract {
protected:
    std::optional<CommonCrypto::SHA1Digest> digest(std::string_view text) {
        return subject().silent().crypto->SHA1(std::as_bytes(std::span(text)));
    }
};
INSTANTIATE_TEST_SUITE_P(Of, CryptoContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(CryptoContract, ThereIsADigestOfEverythingOrOfNothing) {
    EXPECT_EQ(digest("").has_value(), digest("abc").has_value());
}

TEST_P(CryptoContract, DigestIsThatOfTheStandard) {
    constexpr unsigned char kOfABC[] = {0xA9, 0x99, 0x3E, 0x36, 0x47, 0x06, 0x81, 0x6A, 0xBA, 0x3E,
                                        0x25, 0x71, 0x78, 0x50, 0xC2, 0x6C, 0x9C, 0xD0, 0xD8, 0x9D};
    if (const auto ofABC = digest("abc")) {
        EXPECT_TRUE(std::ranges::equal(*ofABC, std::as_bytes(std::span(kOfABC))));
    }
}

} // namespace
} // namespace qk::tests
