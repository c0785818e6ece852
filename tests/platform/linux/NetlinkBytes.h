// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/netlink.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Messages of netlink(7), byte by byte.
namespace qk::tests {

using ByteVector = std::vector<std::byte>;

inline void pad(ByteVector& bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

inline void add(ByteVector& bytes, std::span<const std::byte> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

template <typename T>
requires(!std::is_array_v<T>) [[nodiscard]] ByteVector bytesOf(const T& value) {
    const auto bytes = std::as_bytes(std::span(&value, 1));
    return {bytes.begin(), bytes.end()};
}

[[nodiscard]] inline ByteVector bytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

/// The bytes of an address as the network has them.
[[nodiscard]] inline ByteVector addressBytes(const char* text) {
    ByteVector bytes(std::string_view(text).find(':') != std::string_view::npos ? 16 : 4);
    EXPECT_EQ(::inet_pton(bytes.size() == 16 ? AF_INET6 : AF_INET, text, bytes.data()), 1) << text;
    return bytes;
}

[[nodiscard]] inline platform::InternetAddress internetAddress(const char* text) {
    const ByteVector bytes = addressBytes(text);
    platform::InternetAddress address;
    address.family = bytes.size() == 16 ? platform::AddressFamily::IPv6 : platform::AddressFamily::IPv4;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        address.bytes[index] = std::to_integer<std::uint8_t>(bytes[index]);
    }
    return address;
}

[[nodiscard]] inline ByteVector attribute(std::uint16_t type, const ByteVector& content) {
    ByteVector bytes = bytesOf(nlattr{static_cast<std::uint16_t>(sizeof(nlattr) + content.size()), type});
    add(bytes, content);
    pad(bytes);
    return bytes;
}

/// A fixed part, or nothing, and attributes.
[[nodiscard]] inline ByteVector joined(std::initializer_list<ByteVector> parts) {
    ByteVector bytes;
    for (const ByteVector& part : parts) {
        add(bytes, part);
        pad(bytes);
    }
    return bytes;
}

[[nodiscard]] inline ByteVector message(std::uint16_t type, const ByteVector& payload, std::uint32_t sequence = 1,
                                        std::uint16_t flags = 0) {
    nlmsghdr header{};
    header.nlmsg_len = static_cast<std::uint32_t>(sizeof(header) + payload.size());
    header.nlmsg_type = type;
    header.nlmsg_flags = flags;
    header.nlmsg_seq = sequence;
    ByteVector bytes = bytesOf(header);
    add(bytes, payload);
    pad(bytes);
    return bytes;
}

} // namespace qk::tests
