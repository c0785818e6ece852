// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

TEST(NSException, SaysItsNameAndReason) {
    const NSException exception("SomeException", NSString(u"caf\u00E9 closed"));
    EXPECT_EQ(exception.name(), "SomeException");
    EXPECT_EQ(exception.reason(), NSString(u"caf\u00E9 closed"));
    EXPECT_STREQ(exception.what(), "SomeException: caf\xC3\xA9 closed");
}

TEST(NSException, AReasonWithALoneSurrogateCanStillBeShown) {
    EXPECT_STREQ(NSException("E", NSString(std::u16string_view(u"\xD800", 1))).what(), "E: ?");
}

TEST(NSException, EveryKindHasItsName) {
    EXPECT_EQ(NSRangeException("").name(), "NSRangeException");
    EXPECT_EQ(NSInvalidArgumentException("").name(), "NSInvalidArgumentException");
    EXPECT_EQ(NSUndefinedKeyException("k", "").name(), "NSUnknownKeyException");
    EXPECT_EQ(NSUndefinedKeyException("k", "").key(), "k");
}

TEST(NSException, IsCaughtAsAStandardException) {
    EXPECT_THROW(throw NSRangeException("index 5 beyond 3"), std::exception);
    EXPECT_THROW(throw NSUndefinedKeyException("k", "r"), NSException);
}

} // namespace
} // namespace qk
