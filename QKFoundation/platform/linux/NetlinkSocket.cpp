// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetlinkSocket.h"

#include <linux/netlink.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

namespace qk::platform {
namespace {

using State = parse::DumpProgress::State;

constexpr std::size_t kFirstCapacity = std::size_t{32} << 10U; // the kernel fills no more at once, however much fits
constexpr std::size_t kLargestCapacity = std::size_t{16} << 20U;
constexpr int kMostAttempts = 8;
constexpr int kLongestWaitMilliseconds = 200;

bool isReadable(int descriptor) {
    pollfd entry{descriptor, POLLIN, 0};
    int count = 0;
    do {
        count = ::poll(&entry, 1, kLongestWaitMilliseconds);
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

// The length of the next message, which may be more than fits into `buffer`. Never waits for long: a message of the
// kernel is there before its question has been sent; should one not be, it gets a moment.
ssize_t receiveMessage(int descriptor, std::span<std::byte> buffer, sockaddr_nl& sender, socklen_t& senderLength) {
    for (bool hasWaited = false;;) {
        senderLength = sizeof(sender);
        const ssize_t count = ::recvfrom(descriptor, buffer.data(), buffer.size(), MSG_DONTWAIT | MSG_TRUNC,
                                         reinterpret_cast<sockaddr*>(&sender), &senderLength);
        if (count >= 0 || (errno != EINTR && errno != EAGAIN)) {
            return count;
        }
        if (errno == EAGAIN && (std::exchange(hasWaited, true) || !isReadable(descriptor))) {
            errno = EAGAIN;
            return -1;
        }
    }
}

} // namespace

NetlinkRequest::NetlinkRequest(std::uint16_t type, std::uint16_t flags, parse::Bytes fixed) {
    nlmsghdr header{};
    header.nlmsg_type = type;
    header.nlmsg_flags = static_cast<std::uint16_t>(flags | NLM_F_REQUEST);
    add(std::as_bytes(std::span(&header, 1)));
    add(fixed);
    pad();
}

void NetlinkRequest::append(std::uint16_t type, parse::Bytes bytes) {
    const nlattr header{static_cast<std::uint16_t>(sizeof(nlattr) + bytes.size()), type};
    add(std::as_bytes(std::span(&header, 1)));
    add(bytes);
    pad();
}

void NetlinkRequest::append(std::uint16_t type, std::string_view text) {
    const std::string terminated(text);
    append(type, std::as_bytes(std::span(terminated.c_str(), terminated.size() + 1)));
}

void NetlinkRequest::add(parse::Bytes bytes) {
    if (bytes.size() > kMost - length_) {
        throw std::length_error("a question to the kernel is too long");
    }
    std::ranges::copy(bytes, bytes_.begin() + static_cast<std::ptrdiff_t>(length_));
    length_ += bytes.size();
}

void NetlinkRequest::pad() {
    length_ = (length_ + NLMSG_ALIGNTO - 1) / NLMSG_ALIGNTO * NLMSG_ALIGNTO; // the rest is zero
}

NetlinkSocket::NetlinkSocket(int protocol) : socket_(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, protocol)) {
    // With strict checks the kernel also honours the filters of a question. Kernels before 4.20 list everything.
    const int on = 1;
    static_cast<void>(::setsockopt(socket_.get(), SOL_NETLINK, NETLINK_GET_STRICT_CHK, &on, sizeof(on)));
}

bool NetlinkSocket::dump(NetlinkRequest request, const std::function<void()>& restart,
                         const parse::MessageVisitor& visit) {
    for (int attempt = 1;; ++attempt) {
        restart();
        if (!send(request)) {
            return false;
        }
        const State state = receiveDump(visit);
        if (state != State::Changed || attempt == kMostAttempts) {
            return state != State::Refused;
        }
    }
}

bool NetlinkSocket::ask(NetlinkRequest request, const parse::MessageVisitor& visit) {
    if (!send(request)) {
        return false;
    }
    for (;;) {
        parse::Bytes datagram;
        bool fits = true;
        if (!receive(datagram, fits)) {
            return false;
        }
        if (!fits) {
            errno = EMSGSIZE;
            return false;
        }
        bool isAnswered = false;
        while (const auto message = parse::takeMessage(datagram)) {
            if (message->sequence != sequence_) {
                continue;
            }
            isAnswered = true;
            if (message->type == NLMSG_ERROR) {
                errno = parse::errorNumber(*message);
                return errno == 0;
            }
            visit(*message);
        }
        if (isAnswered) {
            return true;
        }
    }
}

bool NetlinkSocket::send(NetlinkRequest& request) {
    if (!socket_) {
        errno = EBADF;
        return false;
    }
    nlmsghdr header{};
    std::memcpy(&header, request.bytes_.data(), sizeof(header));
    header.nlmsg_len = static_cast<std::uint32_t>(request.length_);
    header.nlmsg_seq = ++sequence_;
    std::memcpy(request.bytes_.data(), &header, sizeof(header));
    sockaddr_nl kernel{};
    kernel.nl_family = AF_NETLINK;
    ssize_t count = -1;
    do {
        count = ::sendto(socket_.get(), request.bytes_.data(), request.length_, 0,
                         reinterpret_cast<const sockaddr*>(&kernel), sizeof(kernel));
    } while (count < 0 && errno == EINTR);
    return count >= 0;
}

// Reads to the end of the list also when it has to be repeated: the kernel writes one at a time.
State NetlinkSocket::receiveDump(const parse::MessageVisitor& visit) {
    parse::DumpProgress progress(sequence_);
    for (;;) {
        parse::Bytes datagram;
        bool fits = true;
        if (!receive(datagram, fits)) {
            return progress.isWhole() ? State::Refused : State::Changed; // the end was in what did not fit
        }
        if (!fits) {
            progress.lose();
        }
        const State state = progress.feed(datagram, visit);
        if (state != State::Reading) {
            errno = progress.error();
            return state;
        }
    }
}

// One datagram of the kernel's. When it did not fit, `fits` becomes false and there is room for the next one of its
// size.
bool NetlinkSocket::receive(parse::Bytes& datagram, bool& fits) {
    if (buffer_ == nullptr) {
        capacity_ = std::max(capacity_, kFirstCapacity);
        buffer_ = std::make_unique_for_overwrite<std::byte[]>(capacity_); // NOLINT(modernize-avoid-c-arrays)
    }
    for (;;) {
        sockaddr_nl sender{};
        socklen_t senderLength = 0;
        const ssize_t count = receiveMessage(socket_.get(), {buffer_.get(), capacity_}, sender, senderLength);
        if (count < 0) {
            return false;
        }
        if (senderLength != sizeof(sender) || sender.nl_pid != 0) { // any process may send to any other
            continue;
        }
        const auto length = static_cast<std::size_t>(count);
        datagram = parse::Bytes(buffer_.get(), std::min(length, capacity_));
        if (length > capacity_) {
            fits = false;
            datagram = {};
            buffer_.reset();
            capacity_ = std::min(length, kLargestCapacity);
        }
        return true;
    }
}

} // namespace qk::platform
