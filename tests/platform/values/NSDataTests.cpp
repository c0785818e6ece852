// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSData.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace qk {
namespace {

using namespace std::string_view_literals;

TEST(NSData, DefaultHoldsNothing) {
    const NSData data;
    EXPECT_TRUE(data.isEmpty());
    EXPECT_EQ(data.length(), 0U);
    EXPECT_EQ(data.view(), "");
    EXPECT_TRUE(data.bytes().empty());
    EXPECT_EQ(data, NSData(""sv));
    EXPECT_EQ(data.hash(), NSData(std::string_view()).hash());
}

TEST(NSData, CopiesTheBytes) {
    std::string bytes = "some bytes";
    const NSData data{std::string_view(bytes)};
    bytes.assign(10, '-');
    EXPECT_EQ(data.view(), "some bytes");
    EXPECT_EQ(data.length(), 10U);
}

TEST(NSData, KeepsEveryByte) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
    }
    EXPECT_EQ(NSData(std::string_view(all)).view(), all);
    EXPECT_EQ(NSData(std::as_bytes(std::span(all))).view(), all);
}

TEST(NSData, CopySharesTheBytes) {
    const NSData data("shared"sv);
    const NSData copy = data; // NOLINT(performance-unnecessary-copy-initialization): the copy is what is tested
    EXPECT_EQ(copy.bytes().data(), data.bytes().data());
}

TEST(NSData, AdoptedMemoryIsNotCopied) {
    void* memory = std::malloc(16);
    ASSERT_NE(memory, nullptr);
    std::memcpy(memory, "0123456789abcdef", 16);
    const NSData data = NSData::adoptingMalloc(memory, 10);
    EXPECT_EQ(data.bytes().data(), memory);
    EXPECT_EQ(data.view(), "0123456789");
}

TEST(NSData, AdoptingNoMemoryGivesNoBytes) {
    const NSData data = NSData::adoptingMalloc(nullptr, 0);
    EXPECT_TRUE(data.isEmpty());
    EXPECT_EQ(data, NSData());
    EXPECT_EQ(data.hash(), NSData().hash());
}

TEST(NSData, AdoptedMemoryIsFreedThoughNoByteOfItCounts) {
    EXPECT_TRUE(NSData::adoptingMalloc(std::malloc(100), 0).isEmpty()); // the leak check is the assertion
}

TEST(NSData, EqualityIsThatOfTheBytes) {
    EXPECT_EQ(NSData("a\0b"sv), NSData("a\0b"sv));
    EXPECT_NE(NSData("a\0b"sv), NSData("a\0c"sv));
    EXPECT_NE(NSData("a"sv), NSData("a\0"sv));
    EXPECT_NE(NSData("a"sv), NSData());
}

TEST(NSData, EqualDataHaveEqualHashes) {
    EXPECT_EQ(NSData("bytes"sv).hash(), NSData("bytes"sv).hash());
    EXPECT_NE(NSData("bytes"sv).hash(), NSData("Bytes"sv).hash());
    EXPECT_NE(NSData(std::string(1000, 'x')).hash(), NSData(std::string(1001, 'x')).hash());
}

} // namespace
} // namespace qk
