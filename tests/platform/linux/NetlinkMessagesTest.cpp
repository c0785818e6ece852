// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"

#include "tests/platform/linux/NetlinkBytes.h"

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <vector>

namespace qk::platform::parse {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::attribute;
using tests::bytesOf;
using tests::ByteVector;
using tests::joined;
using tests::message;

constexpr std::uint16_t kAnything = 16; // the first number that is not one of netlink's own
using State = DumpProgress::State;

std::vector<std::uint16_t> typesOf(Bytes bytes) {
    std::vector<std::uint16_t> types;
    while (const auto message = takeMessage(bytes)) {
        types.push_back(message->type);
    }
    EXPECT_TRUE(bytes.empty());
    return types;
}

TEST(NetlinkMessages, NothingHoldsNoMessage) {
    EXPECT_THAT(typesOf({}), IsEmpty());
    EXPECT_THAT(typesOf(ByteVector(sizeof(nlmsghdr) - 1)), IsEmpty());
}

TEST(NetlinkMessages, ComeOneAfterAnotherAtMultiplesOfFour) {
    const ByteVector bytes =
        joined({message(20, bytesOf("a")), message(21, {}), message(22, bytesOf(std::uint32_t{7}), 9, NLM_F_MULTI)});
    Bytes rest = bytes;
    EXPECT_EQ(takeMessage(rest)->payload.size(), 1U);
    EXPECT_TRUE(takeMessage(rest)->payload.empty());
    const auto last = takeMessage(rest);
    ASSERT_TRUE(last.has_value());
    EXPECT_EQ(last->type, 22);
    EXPECT_EQ(last->flags, NLM_F_MULTI);
    EXPECT_EQ(last->sequence, 9U);
    EXPECT_EQ(leading<std::uint32_t>(last->payload), 7U);
    EXPECT_FALSE(takeMessage(rest).has_value());
}

TEST(NetlinkMessages, OneThatClaimsMoreThanThereIsEndsTheReading) {
    ByteVector bytes = joined({message(20, bytesOf("abcd")), message(21, bytesOf("abcd"))});
    bytes.resize(bytes.size() - 4);
    EXPECT_THAT(typesOf(bytes), ElementsAre(20));
}

TEST(NetlinkMessages, OneThatIsShorterThanItsHeaderEndsTheReading) {
    for (const std::uint32_t length : {0U, 1U, 15U}) {
        ByteVector bytes = joined({message(20, {}), message(21, {})});
        std::memcpy(bytes.data() + sizeof(nlmsghdr), &length, sizeof(length));
        EXPECT_THAT(typesOf(bytes), ElementsAre(20)) << length;
    }
}

TEST(NetlinkMessages, TheLastOneMayLackItsPadding) {
    ByteVector bytes = message(20, bytesOf("abcde"));
    bytes.resize(sizeof(nlmsghdr) + 5);
    Bytes rest = bytes;
    EXPECT_EQ(takeMessage(rest)->payload.size(), 5U);
}

TEST(NetlinkAttributes, NothingHoldsNone) {
    Bytes rest;
    EXPECT_FALSE(takeAttribute(rest).has_value());
    EXPECT_THAT(attributePayload({}, 1), IsEmpty());
    EXPECT_THAT(attributesBehind({}, 16), IsEmpty());
}

TEST(NetlinkAttributes, AreFoundByTypeAndTheFirstOneCounts) {
    const ByteVector bytes =
        joined({attribute(1, bytesOf("one")), attribute(2, bytesOf("two")), attribute(2, bytesOf("again"))});
    EXPECT_EQ(terminatedText(attributePayload(bytes, 2)), "two");
    EXPECT_THAT(attributePayload(bytes, 3), IsEmpty());
}

TEST(NetlinkAttributes, MarksAreNoPartOfTheType) {
    const ByteVector bytes = attribute(std::uint16_t{5 | NLA_F_NESTED | NLA_F_NET_BYTEORDER}, bytesOf("x"));
    Bytes rest = bytes;
    EXPECT_EQ(takeAttribute(rest)->type, 5);
}

TEST(NetlinkAttributes, OneWithAWrongLengthEndsTheReading) {
    for (const std::uint16_t length : std::initializer_list<std::uint16_t>{0, 1, 3, 200, 0xFFFF}) {
        ByteVector bytes = joined({attribute(1, bytesOf("a")), attribute(2, bytesOf("b"))});
        std::memcpy(bytes.data() + 8, &length, sizeof(length));
        Bytes rest = bytes;
        EXPECT_TRUE(takeAttribute(rest).has_value());
        EXPECT_FALSE(takeAttribute(rest).has_value()) << length;
        EXPECT_THAT(rest, IsEmpty());
    }
}

TEST(NetlinkAttributes, TextEndsAtItsZeroByteOrAtTheEnd) {
    EXPECT_EQ(terminatedText({}), "");
    EXPECT_EQ(terminatedText(bytesOf(std::string_view("eth0\0junk", 9))), "eth0");
    EXPECT_EQ(terminatedText(bytesOf("eth0")), "eth0");
}

TEST(NetlinkErrors, AreNumbersOfErrno) {
    const auto number = [](std::uint16_t type, const ByteVector& payload) {
        return errorNumber({type, 0, 1, payload});
    };
    EXPECT_EQ(number(NLMSG_ERROR, {}), EBADMSG);
    EXPECT_EQ(number(NLMSG_ERROR, bytesOf(std::int32_t{0})), 0);
    EXPECT_EQ(number(NLMSG_ERROR, bytesOf(std::int32_t{-ENODEV})), ENODEV);
    EXPECT_EQ(number(NLMSG_ERROR, bytesOf(std::int32_t{INT_MIN})), EBADMSG);
    EXPECT_EQ(number(NLMSG_DONE, {}), 0);
    EXPECT_EQ(number(NLMSG_DONE, bytesOf(std::int32_t{-EOPNOTSUPP})), EOPNOTSUPP);
}

// What a list that comes in `datagrams` is found to be, and how many messages of it were visited.
struct Followed {
    State state = State::Reading;
    int messages = 0;
    int error = 0;
};

Followed follow(const std::vector<ByteVector>& datagrams) {
    Followed result;
    DumpProgress progress(1);
    for (const ByteVector& datagram : datagrams) {
        EXPECT_EQ(result.state, State::Reading);
        result.state = progress.feed(datagram, [&](const NetlinkMessage& /*message*/) { ++result.messages; });
    }
    result.error = progress.error();
    return result;
}

const ByteVector kDone = message(NLMSG_DONE, bytesOf(std::int32_t{0}));

TEST(NetlinkDump, AnEmptyListIsWhole) {
    EXPECT_EQ(follow({}).state, State::Reading);
    EXPECT_EQ(follow({kDone}).state, State::Whole);
}

TEST(NetlinkDump, GoesOnUntilItsLastMessage) {
    const ByteVector one = message(kAnything, bytesOf("abcd"));
    EXPECT_EQ(follow({one, joined({one, one})}).state, State::Reading);
    const Followed whole = follow({one, joined({one, one, kDone})});
    EXPECT_EQ(whole.state, State::Whole);
    EXPECT_EQ(whole.messages, 3);
}

TEST(NetlinkDump, OneThatWasInterruptedIsReadToItsEndAndNotWhole) {
    const ByteVector marked = message(kAnything, {}, 1, NLM_F_DUMP_INTR);
    const Followed followed = follow({marked, message(kAnything, {}), kDone});
    EXPECT_EQ(followed.state, State::Changed);
    EXPECT_EQ(followed.messages, 2);
    EXPECT_EQ(follow({message(NLMSG_DONE, {}, 1, NLM_F_DUMP_INTR)}).state, State::Changed);
}

TEST(NetlinkDump, OneOfWhichADatagramWasLostIsNotWhole) {
    DumpProgress progress(1);
    EXPECT_TRUE(progress.isWhole());
    progress.lose();
    EXPECT_FALSE(progress.isWhole());
    EXPECT_EQ(progress.feed(kDone, [](const NetlinkMessage&) {}), State::Changed);
}

TEST(NetlinkDump, ARefusalEndsItWithItsReason) {
    const Followed refused = follow({message(kAnything, {}), message(NLMSG_ERROR, bytesOf(std::int32_t{-EBUSY}))});
    EXPECT_EQ(refused.state, State::Refused);
    EXPECT_EQ(refused.error, EBUSY);
    EXPECT_EQ(follow({message(NLMSG_DONE, bytesOf(std::int32_t{-ENODEV}))}).error, ENODEV);
}

TEST(NetlinkDump, MessagesOfAnotherAnswerArePassedOver) {
    const Followed followed =
        follow({joined({message(kAnything, {}, 7), message(NLMSG_DONE, {}, 7), message(kAnything, {}), kDone})});
    EXPECT_EQ(followed.state, State::Whole);
    EXPECT_EQ(followed.messages, 1);
}

} // namespace
} // namespace qk::platform::parse
