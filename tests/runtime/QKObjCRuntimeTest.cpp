// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKObjCRuntime.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

const ProtocolDescription& pet() {
    static const ProtocolDescription& description = ProtocolBuilder("Pet")
                                                        .method("feed:")
                                                        .optionalMethod("train:")
                                                        .classMethod("petNamed:")
                                                        .optionalClassMethod("petOfTheYear")
                                                        .property("hungry", "isHungry", "setHungry:")
                                                        .property("age", "age")
                                                        .build();
    return description;
}

const ProtocolDescription& empty() {
    static const ProtocolDescription& description = ProtocolBuilder("Empty").build();
    return description;
}

TEST(QKObjCRuntime, ProtocolThatDeclaresNothingHasEmptyLists) {
    EXPECT_EQ(QKObjCRuntime::selectorsOfOProtocol(empty()), NSArray());
    EXPECT_EQ(QKObjCRuntime::propertiesOfOProtocol(empty()), NSArray());
    EXPECT_FALSE(QKObjCRuntime::protocolContainsSelector(empty(), ""));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsProperty(empty(), ""));
}

TEST(QKObjCRuntime, SelectorsAreTheRequiredInstanceMethodsInOrder) {
    EXPECT_EQ(QKObjCRuntime::selectorsOfOProtocol(pet()),
              NSArray(std::vector<Value>{"feed:", "setHungry:", "isHungry", "age"}));
}

TEST(QKObjCRuntime, PropertiesAreListedByName) {
    EXPECT_EQ(QKObjCRuntime::propertiesOfOProtocol(pet()), NSArray(std::vector<Value>{"hungry", "age"}));
}

TEST(QKObjCRuntime, OptionalAndClassMethodsAreNotContained) {
    EXPECT_TRUE(QKObjCRuntime::protocolContainsSelector(pet(), "feed:"));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsSelector(pet(), "train:"));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsSelector(pet(), "petNamed:"));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsSelector(pet(), "petOfTheYear"));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsSelector(pet(), "feed"));
}

TEST(QKObjCRuntime, PropertyIsNamedByItsNameAndNotByItsAccessors) {
    EXPECT_TRUE(QKObjCRuntime::protocolContainsProperty(pet(), "hungry"));
    EXPECT_TRUE(QKObjCRuntime::protocolContainsProperty(pet(), "age"));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsProperty(pet(), "isHungry"));
    EXPECT_FALSE(QKObjCRuntime::protocolContainsProperty(pet(), "setHungry:"));
}

} // namespace
} // namespace qk
