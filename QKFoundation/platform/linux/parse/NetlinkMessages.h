// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <linux/netlink.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <type_traits>

namespace qk::platform::parse {

/// What came from the kernel, and parts of it.
using Bytes = std::span<const std::byte>;

/// The `T` that `bytes` begin with, in the machine's own byte order; nothing when they are fewer. They need not be
/// aligned.
template <typename T>
requires std::is_trivially_copyable_v<T>
[[nodiscard]] std::optional<T> leading(Bytes bytes) noexcept {
    if (bytes.size() < sizeof(T)) {
        return std::nullopt;
    }
    T value;
    std::memcpy(&value, bytes.data(), sizeof(T));
    return value;
}

/// What follows a fixed part of `length` bytes, aligned as messages and attributes are; empty when nothing does.
[[nodiscard]] inline Bytes attributesBehind(Bytes bytes, std::size_t length) noexcept {
    const std::size_t aligned = (length + NLMSG_ALIGNTO - 1) / NLMSG_ALIGNTO * NLMSG_ALIGNTO;
    return bytes.subspan(aligned < bytes.size() ? aligned : bytes.size());
}

/// The bytes as a text, up to the first zero byte where there is one.
[[nodiscard]] std::string terminatedText(Bytes bytes);

/// A message of netlink(7), without its header.
struct NetlinkMessage {
    std::uint16_t type = 0;
    std::uint16_t flags = 0; ///< NLM_F_...
    std::uint32_t sequence = 0;
    Bytes payload;
};

/// Takes the first message off `rest`. Nothing at the end, and at a message that is longer than what is left or shorter
/// than its own header: then `rest` is emptied, since what follows has no known beginning.
[[nodiscard]] std::optional<NetlinkMessage> takeMessage(Bytes& rest) noexcept;

/// An attribute behind the fixed part of a message, or nested in another one.
struct NetlinkAttribute {
    std::uint16_t type = 0; ///< without the marks NLA_F_NESTED and NLA_F_NET_BYTEORDER
    Bytes payload;
};

/// Takes the first attribute off `rest`; nothing as `takeMessage` does.
[[nodiscard]] inline std::optional<NetlinkAttribute> takeAttribute(Bytes& rest) noexcept {
    // In the header, since a list of 200 links holds 10,000 attributes.
    const auto header = leading<nlattr>(rest);
    if (!header.has_value() || header->nla_len < sizeof(nlattr) || header->nla_len > rest.size()) {
        rest = {};
        return std::nullopt;
    }
    const NetlinkAttribute attribute{static_cast<std::uint16_t>(header->nla_type & NLA_TYPE_MASK),
                                     rest.first(header->nla_len).subspan(sizeof(nlattr))};
    rest = attributesBehind(rest, header->nla_len);
    return attribute;
}

/// Calls `visit` with each attribute of `bytes`.
template <typename Visitor>
void forEachAttribute(Bytes bytes, Visitor&& visit) {
    while (const std::optional<NetlinkAttribute> attribute = takeAttribute(bytes)) {
        visit(*attribute);
    }
}

/// The payload of the first attribute of that type among `bytes`; empty when there is none.
[[nodiscard]] Bytes attributePayload(Bytes bytes, std::uint16_t type) noexcept;

/// The error number (positive) of an NLMSG_ERROR or NLMSG_DONE message, 0 for success. A message too short to tell is
/// EBADMSG; an NLMSG_DONE of old kernels has none and is success.
[[nodiscard]] int errorNumber(const NetlinkMessage& message) noexcept;

/// What is done with each message of an answer.
using MessageVisitor = std::function<void(const NetlinkMessage& message)>;

/// Follows the answer to one question for a list, datagram by datagram, to its end.
class DumpProgress {
public:
    enum class State : std::uint8_t {
        Reading, ///< more follows
        Whole,   ///< the list is complete
        Changed, ///< it is at its end but not complete: it changed while it was written, or a part was lost
        Refused  ///< the kernel gave up; `error` says why
    };

    /// Messages with another sequence number belong to another answer and are passed over.
    explicit DumpProgress(std::uint32_t sequence) noexcept : sequence_(sequence) {}

    /// Calls `visit` with the messages of a datagram, but for the one that ends the list.
    State feed(Bytes datagram, const MessageVisitor& visit);

    /// A datagram did not fit into the memory for it. It may have been the last one.
    void lose() noexcept { isWhole_ = false; }
    [[nodiscard]] bool isWhole() const noexcept { return isWhole_; }

    /// The error number once the state is `Refused`.
    [[nodiscard]] int error() const noexcept { return error_; }

private:
    std::uint32_t sequence_;
    bool isWhole_ = true;
    int error_ = 0;
};

} // namespace qk::platform::parse
