// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxCrypto.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

std::string hexadecimal(std::string_view text) {
    const auto digest = LinuxCrypto().SHA1(std::as_bytes(std::span(text)));
    std::string result;
    for (const std::byte byte : digest.value_or(CommonCrypto::SHA1Digest())) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", std::to_integer<unsigned>(byte));
        result += digits;
    }
    return result;
}

TEST(LinuxCrypto, EmptyInputHasADigestOfItsOwn) {
    EXPECT_EQ(hexadecimal(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
    EXPECT_EQ(hexadecimal({}), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

TEST(LinuxCrypto, DigestsAreThosePublished) {
    EXPECT_EQ(hexadecimal("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(hexadecimal("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
    EXPECT_EQ(hexadecimal("The quick brown fox jumps over the lazy dog"), "2fd4e1c67a2d28fced849ee1bb76e7391b93eb12");
    EXPECT_EQ(hexadecimal(std::string(1'000'000, 'a')), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST(LinuxCrypto, EveryByteCounts) {
    for (const std::size_t length : {55U, 56U, 63U, 64U, 65U, 119U, 128U}) {
        std::string text(length, '\0');
        const std::string digest = hexadecimal(text);
        EXPECT_EQ(hexadecimal(text), digest);
        text.back() = '\1';
        EXPECT_NE(hexadecimal(text), digest) << length;
    }
}

} // namespace
} // namespace qk::platform
