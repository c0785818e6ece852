// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDictionary+KVOChange.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace qk {
namespace {

using NSDictionary_KVOChange::keyValueChangeKind;
using NSDictionary_KVOChange::keyValueChangeNew;
using NSDictionary_KVOChange::keyValueChangeOld;

std::uint64_t kindOf(const NSDictionary& change) {
    return static_cast<std::uint64_t>(keyValueChangeKind(change));
}

TEST(NSDictionaryKVOChange, EmptyChangeSaysNothing) {
    EXPECT_EQ(kindOf({}), 0U);
    EXPECT_EQ(keyValueChangeOld({}), std::nullopt);
    EXPECT_EQ(keyValueChangeNew({}), std::nullopt);
}

TEST(NSDictionaryKVOChange, NullMarkerIsNil) {
    const NSDictionary change{{"kind", NSNull{}}, {"old", NSNull{}}, {"new", NSNull{}}};
    EXPECT_EQ(kindOf(change), 0U);
    EXPECT_EQ(keyValueChangeOld(change), std::nullopt);
    EXPECT_EQ(keyValueChangeNew(change), std::nullopt);
}

TEST(NSDictionaryKVOChange, NothingButTheNullMarkerIsNil) {
    for (const Value& value : {Value(0), Value(false), Value(""), Value(NSArray())}) {
        const NSDictionary change{{"old", value}, {"new", value}};
        EXPECT_EQ(keyValueChangeOld(change), value);
        EXPECT_EQ(keyValueChangeNew(change), value);
    }
    const NSDictionary change{{"old", 1}, {"new", "2"}};
    EXPECT_EQ(keyValueChangeOld(change), Value(1));
    EXPECT_EQ(keyValueChangeNew(change), Value("2"));
}

TEST(NSDictionaryKVOChange, KindIsCutTo32BitsWithoutASign) {
    EXPECT_EQ(keyValueChangeKind({{"kind", 1}}), NSKeyValueChange::Setting);
    EXPECT_EQ(keyValueChangeKind({{"kind", 4}}), NSKeyValueChange::Replacement);
    EXPECT_EQ(kindOf({{"kind", -1}}), 4294967295U);
    EXPECT_EQ(kindOf({{"kind", std::int64_t{4294967297}}}), 1U);
    EXPECT_EQ(kindOf({{"kind", "1"}}), 0U);
}

class Lamp : public NSObject {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description = ClassBuilder<Lamp>("Lamp", NSObject::describedClass())
                                                         .property("colour", &Lamp::colour, &Lamp::setColour)
                                                         .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }
    const std::optional<NSString>& colour() const { return colour_; }
    void setColour(const std::optional<NSString>& colour) {
        changeValueForKey("colour", [&] { colour_ = colour; });
    }
    void observeValueForKeyPath(const NSString& /*keyPath*/, NSObject& /*ofObject*/, const NSDictionary& change,
                                void* /*context*/) override {
        last = change;
    }
    NSDictionary last;

private:
    std::optional<NSString> colour_;
};

TEST(NSDictionaryKVOChange, ReadsWhatAnObserverIsTold) {
    const auto lamp = std::make_shared<Lamp>();
    lamp->addObserver(*lamp, "colour", NSKeyValueObservingOptions::New | NSKeyValueObservingOptions::Old);
    lamp->setColour("red");
    EXPECT_EQ(keyValueChangeKind(lamp->last), NSKeyValueChange::Setting);
    EXPECT_EQ(keyValueChangeOld(lamp->last), std::nullopt);
    EXPECT_EQ(keyValueChangeNew(lamp->last), Value("red"));
    lamp->setColour(std::nullopt);
    EXPECT_EQ(keyValueChangeOld(lamp->last), Value("red"));
    EXPECT_EQ(keyValueChangeNew(lamp->last), std::nullopt) << "nil, not the null marker";
}

} // namespace
} // namespace qk
