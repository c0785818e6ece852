// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSError+QKRecovery.h"
#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

using NSError_QKRecovery::errorWithLocalizedDescription;

TEST(NSErrorQKRecovery, MissingEntryRaises) {
    const auto recoverer = std::make_shared<NSObject>();
    const NSArray options{"Again", "Cancel"};
    EXPECT_THROW((void)errorWithLocalizedDescription(std::nullopt, "s", options, recoverer),
                 NSInvalidArgumentException);
    EXPECT_THROW((void)errorWithLocalizedDescription("d", std::nullopt, options, recoverer),
                 NSInvalidArgumentException);
    EXPECT_THROW((void)errorWithLocalizedDescription("d", "s", std::nullopt, recoverer), NSInvalidArgumentException);
    EXPECT_THROW((void)errorWithLocalizedDescription("d", "s", options, nullptr), NSInvalidArgumentException);
}

TEST(NSErrorQKRecovery, EmptyEntriesAreNotMissing) {
    const auto error = errorWithLocalizedDescription("", "", NSArray(), std::make_shared<NSObject>());
    EXPECT_EQ(error->userInfo().count(), 4U);
    EXPECT_EQ(error->localizedDescription(), "");
}

TEST(NSErrorQKRecovery, HoldsTheFourEntriesUnderTheirKeys) {
    const auto recoverer = std::make_shared<NSObject>();
    const auto error = errorWithLocalizedDescription("It broke.", "Try again.", NSArray{"Again", "Cancel"}, recoverer);
    EXPECT_TRUE(error->domain().hasSuffix(".qkerror.recoverable"));
    EXPECT_EQ(error->domain(), "com.qkfoundation.qkerror.recoverable");
    EXPECT_EQ(error->code(), 0);
    EXPECT_EQ(error->localizedDescription(), "It broke.");
    EXPECT_EQ(error->userInfo(), (NSDictionary{{NSLocalizedDescriptionKey, "It broke."},
                                               {NSLocalizedRecoverySuggestionErrorKey, "Try again."},
                                               {NSLocalizedRecoveryOptionsErrorKey, NSArray{"Again", "Cancel"}},
                                               {NSRecoveryAttempterErrorKey, recoverer}}));
    EXPECT_EQ(error->userInfo().objectForKey(NSRecoveryAttempterErrorKey)->asObject<NSObject>(), recoverer);
}

} // namespace
} // namespace qk
