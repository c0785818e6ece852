// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"

#include <climits>

#include <algorithm>
#include <cerrno>

namespace qk::platform::parse {

std::string terminatedText(Bytes bytes) {
    const auto end = std::ranges::find(bytes, std::byte{0});
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(end - bytes.begin())};
}

std::optional<NetlinkMessage> takeMessage(Bytes& rest) noexcept {
    const auto header = leading<nlmsghdr>(rest);
    if (!header.has_value() || header->nlmsg_len < sizeof(nlmsghdr) || header->nlmsg_len > rest.size()) {
        rest = {};
        return std::nullopt;
    }
    const NetlinkMessage message{header->nlmsg_type, header->nlmsg_flags, header->nlmsg_seq,
                                 rest.first(header->nlmsg_len).subspan(sizeof(nlmsghdr))};
    rest = attributesBehind(rest, header->nlmsg_len);
    return message;
}

Bytes attributePayload(Bytes bytes, std::uint16_t type) noexcept {
    while (const std::optional<NetlinkAttribute> attribute = takeAttribute(bytes)) {
        if (attribute->type == type) {
            return attribute->payload;
        }
    }
    return {};
}

int errorNumber(const NetlinkMessage& message) noexcept {
    const auto error = leading<std::int32_t>(message.payload);
    if (!error.has_value()) {
        return message.type == NLMSG_DONE ? 0 : EBADMSG;
    }
    // INT_MIN has no positive counterpart; the kernel never says it.
    return *error == INT_MIN ? EBADMSG : (*error < 0 ? -*error : *error);
}

DumpProgress::State DumpProgress::feed(Bytes datagram, const MessageVisitor& visit) {
    while (const auto message = takeMessage(datagram)) {
        if (message->sequence != sequence_) {
            continue;
        }
        isWhole_ = isWhole_ && (message->flags & NLM_F_DUMP_INTR) == 0;
        if (message->type == NLMSG_DONE || message->type == NLMSG_ERROR) {
            error_ = errorNumber(*message);
            return error_ != 0 ? State::Refused : (isWhole_ ? State::Whole : State::Changed);
        }
        visit(*message);
    }
    return State::Reading;
}

} // namespace qk::platform::parse
