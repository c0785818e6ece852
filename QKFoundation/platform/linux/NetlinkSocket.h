// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/UniqueHandle.h"
#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <type_traits>

namespace qk::platform {

/// A message to the kernel: a fixed part, then attributes. Questions are short: it has room for `kMost` bytes, and what
/// goes beyond is an error of ours.
class NetlinkRequest {
public:
    template <typename Fixed>
    requires std::is_trivially_copyable_v<Fixed> NetlinkRequest(std::uint16_t type, std::uint16_t flags,
                                                                const Fixed& fixed)
        : NetlinkRequest(type, flags, std::as_bytes(std::span(&fixed, 1))) {}

    /// Adds an attribute whose content is `bytes`.
    void append(std::uint16_t type, parse::Bytes bytes);

    template <typename T>
    requires std::is_arithmetic_v<T>
    void append(std::uint16_t type, T number) { append(type, std::as_bytes(std::span(&number, 1))); }

    /// Adds an attribute of a text and its zero byte.
    void append(std::uint16_t type, std::string_view text);

private:
    friend class NetlinkSocket;
    static constexpr std::size_t kMost = 128;

    NetlinkRequest(std::uint16_t type, std::uint16_t flags, parse::Bytes fixed);
    void add(parse::Bytes bytes);
    void pad();

    alignas(std::uint32_t) std::array<std::byte, kMost> bytes_{};
    std::size_t length_ = 0;
};

/// A connection to one family of netlink(7), for questions: NETLINK_ROUTE, NETLINK_GENERIC. The kernel answers a
/// question before it returns from its sending, so no answer is waited for. Threads: one at a time.
class NetlinkSocket {
public:
    explicit NetlinkSocket(int protocol);

    /// False where the kernel refuses the connection; then every question fails.
    [[nodiscard]] bool isOpen() const noexcept { return static_cast<bool>(socket_); }

    /// Asks for a list (NLM_F_DUMP) and calls `visit` with each message of it. A list that changed while the kernel
    /// wrote it, or of which a message did not fit, is asked for again: `restart` is called before each attempt. When
    /// it changes each time, the last attempt counts. False, with errno, when the kernel refuses; what was visited is
    /// then not whole.
    [[nodiscard]] bool dump(NetlinkRequest request, const std::function<void()>& restart,
                            const parse::MessageVisitor& visit);

    /// Asks for one thing and calls `visit` with the messages of the answer. False, with errno, when the kernel
    /// refuses.
    [[nodiscard]] bool ask(NetlinkRequest request, const parse::MessageVisitor& visit);

private:
    [[nodiscard]] bool send(NetlinkRequest& request);
    [[nodiscard]] parse::DumpProgress::State receiveDump(const parse::MessageVisitor& visit);
    [[nodiscard]] bool receive(parse::Bytes& datagram, bool& fits);

    UniqueFD socket_;
    std::uint32_t sequence_ = 0;
    std::size_t capacity_ = 0;
    std::unique_ptr<std::byte[]> buffer_; // NOLINT(modernize-avoid-c-arrays): memory that is not zeroed first
};

} // namespace qk::platform
