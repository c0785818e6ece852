// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSError.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

TEST(NSError, WithoutADescriptionSaysDomainAndCode) {
    const auto error = NSError::errorWithDomain("some.domain", -5, {});
    EXPECT_EQ(error->localizedDescription(), "Error -5 of some.domain");
    EXPECT_EQ(NSError::errorWithDomain("d", 1, {{NSLocalizedDescriptionKey, 3}})->localizedDescription(),
              "Error 1 of d");
    EXPECT_TRUE(error->userInfo().isEmpty());
}

TEST(NSError, HoldsWhatItWasMadeOf) {
    const auto error = NSError::errorWithDomain("d", 2, {{NSLocalizedDescriptionKey, "It broke."}});
    EXPECT_EQ(error->domain(), "d");
    EXPECT_EQ(error->code(), 2);
    EXPECT_EQ(error->localizedDescription(), "It broke.");
    EXPECT_EQ(error->valueForKey("code"), Value(2));
    EXPECT_EQ(error->valueForKey("domain"), Value("d"));
    EXPECT_EQ(error->valueForKey("localizedDescription"), Value("It broke."));
    EXPECT_THROW(error->setValueForKey(3, "code"), NSUndefinedKeyException);
}

TEST(NSError, EqualByContent) {
    const auto error = NSError::errorWithDomain("d", 2, {{"a", 1}});
    const auto same = NSError::errorWithDomain("d", 2, {{"a", 1}});
    EXPECT_EQ(Value(error), Value(same));
    EXPECT_EQ(error->hash(), same->hash());
    EXPECT_FALSE(error->isEqual(NSError::errorWithDomain("e", 2, {{"a", 1}})));
    EXPECT_FALSE(error->isEqual(NSError::errorWithDomain("d", 3, {{"a", 1}})));
    EXPECT_FALSE(error->isEqual(NSError::errorWithDomain("d", 2, {})));
    EXPECT_FALSE(error->isEqual("d"));
}

} // namespace
} // namespace qk
