// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSObject.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <sstream>

namespace qk {
namespace {

class Animal : public NSObject {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description = ClassBuilder<Animal>("Animal", NSObject::describedClass())
                                                         .property("name", &Animal::name, &Animal::setName)
                                                         .property("legs", &Animal::legs, &Animal::setLegs)
                                                         .property("tame", &Animal::isTame)
                                                         .property("friends", &Animal::friends)
                                                         .method("greet:times:", &Animal::greet)
                                                         .method("sleep", &Animal::sleep)
                                                         .method("sound", &Animal::sound)
                                                         .protocol("Living")
                                                         .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    const std::optional<NSString>& name() const { return name_; }
    void setName(const std::optional<NSString>& name) { name_ = name; }
    std::uint32_t legs() const { return legs_; }
    void setLegs(std::uint32_t legs) { legs_ = legs; }
    bool isTame() const { return true; }
    std::vector<std::shared_ptr<Animal>> friends() const { return friends_; }
    void addFriend(std::shared_ptr<Animal> other) { friends_.push_back(std::move(other)); }
    NSString greet(const NSString& whom, int times) const { return whom + NSString::fromInteger(times); }
    void sleep() { ++sleeps; }
    virtual std::optional<NSString> sound() const { return std::nullopt; }

    int sleeps = 0;

private:
    std::optional<NSString> name_;
    std::uint32_t legs_ = 4;
    std::vector<std::shared_ptr<Animal>> friends_;
};

class Dog : public Animal {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description = ClassBuilder<Dog>("Dog", Animal::describedClass())
                                                         .property("tame", &Dog::tameness)
                                                         .method("fetch:", &Dog::fetch)
                                                         .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    double tameness() const { return 0.5; }
    std::shared_ptr<Animal> fetch(const std::shared_ptr<Animal>& other) { return other; }
    std::optional<NSString> sound() const override { return "woof"; }
};

TEST(NSObject, HasNoKeysAndNoMethods) {
    const auto object = std::make_shared<NSObject>();
    EXPECT_THROW((void)object->valueForKey("name"), NSUndefinedKeyException);
    EXPECT_THROW(object->performSelector("name"), NSInvalidArgumentException);
    EXPECT_FALSE(object->respondsToSelector("name"));
    EXPECT_FALSE(object->conformsToProtocol("Living"));
    EXPECT_EQ(NSObject::describedClass().superclass(), nullptr);
}

TEST(NSObject, IsEqualToItselfAlone) {
    const auto object = std::make_shared<NSObject>();
    const auto other = std::make_shared<NSObject>();
    EXPECT_TRUE(object->isEqual(object));
    EXPECT_FALSE(object->isEqual(other));
    EXPECT_FALSE(object->isEqual("text"));
    EXPECT_FALSE(object->isEqual(NSNull{}));
    EXPECT_EQ(object->hash(), object->hash());
    EXPECT_EQ(Value(object), Value(object));
    EXPECT_NE(Value(object), Value(other));
}

TEST(NSObject, IsDescribedByItsClassAndAddress) {
    const auto dog = std::make_shared<Dog>();
    std::ostringstream expected;
    expected << "<Dog: 0x" << std::hex << reinterpret_cast<std::uintptr_t>(dog.get()) << ">";
    EXPECT_EQ(dog->description().utf8(), expected.str());
}

TEST(NSObject, KnowsItsClassAndThoseAbove) {
    const Dog dog;
    EXPECT_TRUE(dog.isKindOfClass(Dog::describedClass()));
    EXPECT_TRUE(dog.isKindOfClass(Animal::describedClass()));
    EXPECT_TRUE(dog.isKindOfClass(NSObject::describedClass()));
    EXPECT_FALSE(Animal().isKindOfClass(Dog::describedClass()));
    EXPECT_EQ(Dog::describedClass().superclass(), &Animal::describedClass());
    EXPECT_EQ(dog.classDescription().name(), "Dog");
}

TEST(NSObject, AdoptsTheProtocolsOfItsSuperclass) {
    EXPECT_TRUE(Dog().conformsToProtocol("Living"));
    EXPECT_FALSE(Dog().conformsToProtocol("living"));
}

TEST(NSObject, AValueThatIsNilIsNothing) {
    EXPECT_EQ(Animal().valueForKey("name"), std::nullopt);
}

TEST(NSObject, ValuesAreLookedUpByKey) {
    Animal animal;
    animal.setName("Rex");
    EXPECT_EQ(animal.valueForKey("name"), Value("Rex"));
    EXPECT_EQ(animal.valueForKey("legs"), Value(4));
    EXPECT_EQ(animal.valueForKey("tame"), Value(true));
    EXPECT_EQ(animal.valueForKey("friends"), Value(NSArray()));
}

TEST(NSObject, BooleansStayBooleans) {
    EXPECT_TRUE(Animal().valueForKey("tame")->as<NSNumber>()->isBoolean());
}

TEST(NSObject, ObjectsInListsAreElementsOfAnArray) {
    const auto animal = std::make_shared<Animal>();
    const auto dog = std::make_shared<Dog>();
    animal->addFriend(dog);
    animal->addFriend(nullptr);
    EXPECT_EQ(animal->valueForKey("friends"), Value(NSArray{dog, NSNull{}}));
}

TEST(NSObject, ASubclassInheritsAndReplacesKeys) {
    const Dog dog;
    EXPECT_EQ(dog.valueForKey("legs"), Value(4));
    EXPECT_EQ(dog.valueForKey("tame"), Value(0.5));
}

TEST(NSObject, AnUnknownKeyRaisesAndNamesIt) {
    try {
        (void)Dog().valueForKey("wings");
        FAIL() << "nothing was raised";
    } catch (const NSUndefinedKeyException& exception) {
        EXPECT_EQ(exception.key(), "wings");
        EXPECT_TRUE(exception.reason().contains(u"Dog"));
    }
}

TEST(NSObject, ValuesAreSetByKey) {
    Animal animal;
    animal.setValueForKey("Rex", "name");
    animal.setValueForKey(3, "legs");
    EXPECT_EQ(animal.name(), "Rex");
    EXPECT_EQ(animal.legs(), 3U);
    animal.setValueForKey(std::nullopt, "name");
    EXPECT_EQ(animal.name(), std::nullopt);
}

TEST(NSObject, SettingWhatCannotBeSetRaises) {
    Animal animal;
    EXPECT_THROW(animal.setValueForKey(true, "wings"), NSUndefinedKeyException);
    EXPECT_THROW(animal.setValueForKey(true, "tame"), NSUndefinedKeyException);
    EXPECT_THROW(animal.setValueForKey(std::nullopt, "legs"), NSInvalidArgumentException);
    EXPECT_THROW(animal.setValueForKey("many", "legs"), NSInvalidArgumentException);
    EXPECT_THROW(animal.setValueForKey(7, "name"), NSInvalidArgumentException);
    EXPECT_EQ(animal.legs(), 4U);
}

TEST(NSObject, ADictionaryOfValuesHoldsTheNullMarkerForNil) {
    EXPECT_EQ(Animal().dictionaryWithValuesForKeys({"name", "legs"}), (NSDictionary{{"name", NSNull{}}, {"legs", 4}}));
    EXPECT_EQ(Animal().dictionaryWithValuesForKeys({}), NSDictionary());
    EXPECT_THROW((void)Animal().dictionaryWithValuesForKeys({"legs", "wings"}), NSUndefinedKeyException);
}

TEST(NSObject, MethodsArePerformedBySelector) {
    Dog dog;
    EXPECT_EQ(dog.performSelector("sleep"), std::nullopt);
    EXPECT_EQ(dog.sleeps, 1);
    const std::array<std::optional<Value>, 2> arguments{"Ada", 3};
    EXPECT_EQ(dog.performSelector("greet:times:", arguments), Value("Ada3"));
    EXPECT_EQ(dog.performSelector("sound"), Value("woof"));
    EXPECT_EQ(Animal().performSelector("sound"), std::nullopt);
    EXPECT_TRUE(dog.respondsToSelector("fetch:"));
    EXPECT_FALSE(Animal().respondsToSelector("fetch:"));
}

TEST(NSObject, ObjectsPassThroughMethods) {
    Dog dog;
    const auto other = std::make_shared<Animal>();
    EXPECT_EQ(dog.performSelector("fetch:", std::array<std::optional<Value>, 1>{other}), Value(other));
    EXPECT_EQ(dog.performSelector("fetch:", std::array<std::optional<Value>, 1>{}), std::nullopt);
    EXPECT_THROW(dog.performSelector("fetch:", std::array<std::optional<Value>, 1>{"stick"}),
                 NSInvalidArgumentException);
}

TEST(NSObject, ArgumentsThatDoNotFitRaise) {
    Animal animal;
    EXPECT_THROW(animal.performSelector("greet:times:"), NSInvalidArgumentException);
    EXPECT_THROW(animal.performSelector("greet:times:", std::array<std::optional<Value>, 2>{3, "Ada"}),
                 NSInvalidArgumentException);
    EXPECT_THROW(animal.performSelector("sleep", std::array<std::optional<Value>, 1>{1}), NSInvalidArgumentException);
}

TEST(NSObject, TheDescriptionListsTheClassesOwnMembers) {
    EXPECT_EQ(Dog::describedClass().ownProperties().size(), 1U);
    EXPECT_NE(Dog::describedClass().method("sleep"), nullptr);
}

TEST(NSObject, UnrecognisedSelectorsGoThroughOneHook) {
    class Lenient : public NSObject {
    public:
        void doesNotRecognizeSelector(const NSString& selector) const override { asked = selector; }
        mutable NSString asked;
    };
    EXPECT_THROW(std::make_shared<NSObject>()->doesNotRecognizeSelector("fly"), NSInvalidArgumentException);
    const auto lenient = std::make_shared<Lenient>();
    EXPECT_EQ(lenient->performSelector("fly"), std::nullopt);
    EXPECT_EQ(lenient->asked, "fly");
}

} // namespace
} // namespace qk
