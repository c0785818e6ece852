// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSValueTransformer.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <barrier>
#include <thread>
#include <utility>

namespace qk {
namespace {

class Plain : public NSValueTransformer {};

/// Asks the registry when it dies.
class Curious : public NSValueTransformer {
public:
    explicit Curious(bool& found) : found_(&found) {}
    ~Curious() override { *found_ = NSValueTransformer::valueTransformerForName("curious") != nullptr; }

private:
    bool* found_;
};

TEST(NSValueTransformer, NameWithoutATransformerHasNone) {
    EXPECT_EQ(NSValueTransformer::valueTransformerForName("nobody"), nullptr);
    NSValueTransformer::setValueTransformer(nullptr, "nobody");
    EXPECT_EQ(NSValueTransformer::valueTransformerForName("nobody"), nullptr);
}

TEST(NSValueTransformer, IsFoundUnderItsNameUntilItIsReplacedOrTakenAway) {
    const auto first = std::make_shared<Plain>();
    const auto second = std::make_shared<Plain>();
    NSValueTransformer::setValueTransformer(first, "one");
    NSValueTransformer::setValueTransformer(first, "another");
    EXPECT_EQ(NSValueTransformer::valueTransformerForName("one"), first);
    NSValueTransformer::setValueTransformer(second, "one");
    EXPECT_EQ(NSValueTransformer::valueTransformerForName("one"), second);
    EXPECT_EQ(NSValueTransformer::valueTransformerNames(), (std::vector<NSString>{"another", "one"}));
    NSValueTransformer::setValueTransformer(nullptr, "one");
    NSValueTransformer::setValueTransformer(nullptr, "another");
    EXPECT_TRUE(NSValueTransformer::valueTransformerNames().empty());
}

TEST(NSValueTransformer, ChangesNothingByItself) {
    const Plain plain;
    EXPECT_EQ(plain.transformedValue(std::nullopt), std::nullopt);
    EXPECT_EQ(plain.transformedValue("a"), Value("a"));
    EXPECT_EQ(plain.reverseTransformedValue(std::nullopt), std::nullopt);
    EXPECT_EQ(plain.reverseTransformedValue(7), Value(7));
    EXPECT_TRUE(Plain::allowsReverseTransformation());
}

TEST(NSValueTransformer, WayBackIsTheWayForthUnlessASubclassSaysMore) {
    class Negation : public NSValueTransformer {
    public:
        std::optional<Value> transformedValue(const std::optional<Value>& value) const override {
            return !value->as<NSNumber>()->boolValue();
        }
    };
    EXPECT_EQ(Negation().reverseTransformedValue(true), Value(false));
}

TEST(NSValueTransformer, RegistryMayBeAskedWhileATransformerDies) {
    bool found = true;
    NSValueTransformer::setValueTransformer(std::make_shared<Curious>(found), "curious");
    NSValueTransformer::setValueTransformer(nullptr, "curious");
    EXPECT_FALSE(found);
    NSValueTransformer::setValueTransformer(std::make_shared<Curious>(found), "curious");
    NSValueTransformer::setValueTransformer(std::make_shared<Plain>(), "curious");
    EXPECT_TRUE(found);
    NSValueTransformer::setValueTransformer(nullptr, "curious");
}

TEST(NSValueTransformer, RegistryServesAllThreads) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 500;
    std::barrier start(kThreads);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            const NSString own = NSString::fromInteger(thread);
            start.arrive_and_wait();
            for (int round = 0; round < kRounds; ++round) {
                const auto transformer = std::make_shared<Plain>();
                NSValueTransformer::setValueTransformer(transformer, "shared");
                NSValueTransformer::setValueTransformer(transformer, own);
                EXPECT_NE(NSValueTransformer::valueTransformerForName("shared"), nullptr);
                EXPECT_EQ(NSValueTransformer::valueTransformerForName(own), transformer);
                EXPECT_GE(NSValueTransformer::valueTransformerNames().size(), 2U);
                NSValueTransformer::setValueTransformer(nullptr, own);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(NSValueTransformer::valueTransformerNames(), (std::vector<NSString>{"shared"}));
    NSValueTransformer::setValueTransformer(nullptr, "shared");
}

} // namespace
} // namespace qk
