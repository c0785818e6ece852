// SPDX-License-Identifier: Apache-2.0
// What conditions say of an object.
#include "QKFoundation/platform/objects/NSPredicate.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/objects/InterfaceObject.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace qk {
namespace {

class Predicates : public testing::Test {
protected:
    [[nodiscard]] bool meets(std::string_view format, const std::vector<Value>& arguments = {}) const {
        return NSPredicate::predicateWithFormat(text(format), arguments)->evaluateWithObject(*object);
    }

    std::shared_ptr<InterfaceObject> object = std::make_shared<InterfaceObject>();
};

TEST_F(Predicates, AbsentOrNullBooleanIsNotYes) {
    EXPECT_FALSE(meets("enabled = YES"));
    EXPECT_FALSE(meets("#any = YES"));
    EXPECT_FALSE(meets("enabled = NO"));
}

TEST_F(Predicates, UnknownKeyIsRaisedWhenEvaluated) {
    const auto predicate = NSPredicate::predicateWithFormat("bogus = YES");
    try {
        static_cast<void>(predicate->evaluateWithObject(*object));
        FAIL() << "nothing was raised";
    } catch (const NSUndefinedKeyException& exception) {
        EXPECT_EQ(exception.name(), "NSUnknownKeyException");
        EXPECT_EQ(exception.key(), "bogus");
    }
    object->name = "en0";
    EXPECT_THROW((void)meets("name.length = 3"), NSUndefinedKeyException);
    EXPECT_THROW((void)meets("members.@count = 0"), NSInvalidArgumentException);
}

TEST_F(Predicates, WhatDoesNotMatterIsNotAsked) {
    EXPECT_FALSE(meets("linkActive = YES AND bogus = YES"));
    EXPECT_TRUE(meets("linkActive = NO OR bogus = YES"));
}

TEST_F(Predicates, KeyPathLeadsThroughObjectsAndArraysOfThem) {
    object->parent = std::make_shared<InterfaceObject>();
    object->parent->name = "bond0";
    EXPECT_TRUE(meets("parent.name = 'bond0'"));
    EXPECT_TRUE(meets("parent.parent.name = nil"));
    object->members = {object->parent, std::make_shared<InterfaceObject>()};
    EXPECT_TRUE(meets("ANY members.name = 'bond0'"));
    EXPECT_FALSE(meets("ALL members.name = 'bond0'"));
    EXPECT_TRUE(meets("ANY members.name = nil"));
    EXPECT_THROW((void)meets("parent.bogus = 1"), NSUndefinedKeyException);
}

TEST_F(Predicates, SelfIsTheObject) {
    object->parent = object;
    EXPECT_TRUE(meets("SELF = parent"));
    EXPECT_TRUE(meets("SELF = %@", {object}));
    EXPECT_TRUE(meets("%K = parent", {"SELF"}));
    EXPECT_FALSE(meets("SELF = %@", {std::make_shared<InterfaceObject>()}));
    object->parent = nullptr;
    const InterfaceObject unshared;
    EXPECT_TRUE(NSPredicate::predicateWithFormat("SELF = nil")->evaluateWithObject(unshared));
}

TEST_F(Predicates, LookupAnswersInTheObjectsPlace) {
    std::vector<NSString> asked;
    const auto lookup = [&](const NSString& keyPath) -> std::optional<Value> {
        asked.push_back(keyPath);
        return keyPath == "kMDItemContentTypeTree" ? std::optional<Value>(NSArray{"public.png", "public.image"})
                                                   : std::nullopt;
    };
    const auto predicate =
        NSPredicate::predicateWithFormat("a.b = 1 OR kMDItemContentTypeTree == %@", {"public.image"});
    EXPECT_TRUE(predicate->evaluateWithLookup(lookup));
    EXPECT_EQ(asked, (std::vector<NSString>{"a.b", "kMDItemContentTypeTree"}));
    EXPECT_FALSE(
        NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.item'")->evaluateWithLookup(lookup));
}

TEST_F(Predicates, ArgumentsStandForConstantsAndKeyPaths) {
    object->name = "en0";
    object->speed = 10;
    object->since = NSDate::dateWithTimeIntervalSince1970(5);
    EXPECT_TRUE(meets("%K = %@", {"name", "en0"}));
    EXPECT_TRUE(meets("name IN %@", {NSArray{"en0", "en1"}}));
    EXPECT_TRUE(meets("name IN {%@, %@}", {"en1", "en0"}));
    EXPECT_TRUE(meets("speed BETWEEN %@", {NSArray{5, 15}}));
    EXPECT_TRUE(meets("since > %@", {NSDate::dateWithTimeIntervalSince1970(4)}));
    EXPECT_TRUE(meets("parent = %@", {NSNull{}}));
    EXPECT_TRUE(
        meets("speed = %d AND speed = %i AND speed = %u AND speed = %f AND speed = %lld", {10, 10, 10, 10, 10}));
    EXPECT_TRUE(meets("speed = %d", {10.9}));
    EXPECT_FALSE(meets("speed = %f", {10.9}));
    EXPECT_TRUE(meets("'%@' = %@", {"%@"})) << "inside quotation marks it is plain text";
    EXPECT_TRUE(meets("name = %@", {"en0", "one too many"}));
}

TEST_F(Predicates, MissingOrWrongArgumentIsRaised) {
    EXPECT_THROW((void)meets("name = %@"), NSInvalidArgumentException);
    EXPECT_THROW((void)meets("%K = %@", {"name"}), NSInvalidArgumentException);
    EXPECT_THROW((void)meets("%K = 1", {5}), NSInvalidArgumentException);
    EXPECT_THROW((void)meets("speed = %d", {"5"}), NSInvalidArgumentException);
    EXPECT_THROW((void)meets("speed BETWEEN %@", {5}), NSInvalidArgumentException);
}

TEST(NSCompoundPredicate, OfNothing) {
    const InterfaceObject object;
    EXPECT_FALSE(NSCompoundPredicate::orPredicateWithSubpredicates({})->evaluateWithObject(object));
    EXPECT_TRUE(NSCompoundPredicate::andPredicateWithSubpredicates({})->evaluateWithObject(object));
}

TEST(NSCompoundPredicate, JoinsPredicates) {
    InterfaceObject object;
    object.linkActive = true;
    const auto active = NSPredicate::predicateWithFormat("linkActive = YES");
    const auto builtin = NSPredicate::predicateWithFormat("builtin = YES");
    const auto both = NSCompoundPredicate::andPredicateWithSubpredicates({active, builtin});
    const auto one = NSCompoundPredicate::orPredicateWithSubpredicates({builtin, active});
    EXPECT_FALSE(both->evaluateWithObject(object));
    EXPECT_TRUE(one->evaluateWithObject(object));
    EXPECT_TRUE(NSCompoundPredicate::notPredicateWithSubpredicate(both)->evaluateWithObject(object));
    EXPECT_EQ(both->subpredicates(), (NSCompoundPredicate::Subpredicates{active, builtin}));
    EXPECT_EQ(one->keyPaths(), (std::vector<NSString>{"builtin", "linkActive"}));
    EXPECT_EQ(one->classDescription().name(), "NSCompoundPredicate");
    EXPECT_TRUE(one->isKindOfClass(NSPredicate::describedClass()));
}

TEST(NSCompoundPredicate, OfNilIsRaised) {
    EXPECT_THROW((void)NSCompoundPredicate::notPredicateWithSubpredicate(nullptr), NSInvalidArgumentException);
    EXPECT_THROW((void)NSCompoundPredicate::andPredicateWithSubpredicates({nullptr}), NSInvalidArgumentException);
}

TEST(NSCompoundPredicate, NestedTooDeepIsRaised) {
    std::shared_ptr<const NSPredicate> predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE");
    for (int depth = 0; depth < 200; ++depth) {
        predicate = NSCompoundPredicate::notPredicateWithSubpredicate(predicate);
    }
    EXPECT_TRUE(predicate->evaluateWithLookup({}));
    EXPECT_TRUE(NSPredicate::predicateWithFormat(predicate->predicateFormat())->evaluateWithLookup({}));
    EXPECT_THROW((void)NSCompoundPredicate::orPredicateWithSubpredicates({predicate}), NSInvalidArgumentException);
}

TEST(FilteredArrayUsingPredicate, KeepsTheOrder) {
    std::vector<std::shared_ptr<InterfaceObject>> interfaces;
    EXPECT_TRUE(filteredArrayUsingPredicate(interfaces, *NSPredicate::predicateWithFormat("bogus = 1")).empty());
    for (int index = 0; index < 6; ++index) {
        interfaces.push_back(std::make_shared<InterfaceObject>());
        interfaces.back()->linkActive = index % 2 == 1;
    }
    const auto active = filteredArrayUsingPredicate(interfaces, *NSPredicate::predicateWithFormat("linkActive = YES"));
    EXPECT_EQ(active, (std::vector{interfaces[1], interfaces[3], interfaces[5]}));
}

} // namespace
} // namespace qk
