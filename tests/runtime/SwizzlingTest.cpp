// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/runtime/NSObject+Swizzling.h"

#include "tests/runtime/Animals.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace qk {
namespace {

using namespace NSObject_Swizzling;
using tests::Animal;
using tests::Cat;

// Puts back what a test exchanged: classes live as long as the program.
class Exchange {
public:
    using Swizzle = void (*)(const ClassDescription&, const NSString&, const NSString&);
    Exchange(Swizzle swizzle, const ClassDescription& description, NSString one, NSString other)
        : swizzle_(swizzle), description_(description), one_(std::move(one)), other_(std::move(other)) {
        swizzle_(description_, one_, other_);
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange() { swizzle_(description_, one_, other_); }

private:
    Swizzle swizzle_;
    const ClassDescription& description_;
    NSString one_;
    NSString other_;
};

TEST(Swizzling, NothingHappensWhenOneMethodIsMissing) {
    const Exchange instance(&swizzleInstanceMethod, Animal::describedClass(), "sound", "fly");
    const Exchange other(&swizzleInstanceMethod, Animal::describedClass(), "fly", "sound");
    const Exchange ofClass(&swizzleClassMethod, Animal::describedClass(), "kingdom", "fly");
    Animal animal;
    EXPECT_EQ(animal.performSelector("sound"), std::optional<Value>("..."));
    EXPECT_FALSE(animal.respondsToSelector("fly"));
    EXPECT_EQ(Animal::describedClass().performClassSelector("kingdom"), std::optional<Value>("Animalia"));
}

TEST(Swizzling, InstanceMethodsAreExchanged) {
    const Exchange exchange(&swizzleInstanceMethod, Animal::describedClass(), "sound", "motto");
    Animal animal;
    EXPECT_EQ(animal.performSelector("sound"), std::optional<Value>("eat"));
    EXPECT_EQ(animal.performSelector("motto"), std::optional<Value>("..."));
    EXPECT_EQ(animal.sound(), "...");
}

TEST(Swizzling, SecondExchangeUndoesTheFirst) {
    { const Exchange exchange(&swizzleInstanceMethod, Animal::describedClass(), "sound", "motto"); }
    EXPECT_EQ(Animal().performSelector("sound"), std::optional<Value>("..."));
}

TEST(Swizzling, InheritedMethodIsExchangedForEveryClassThatInheritsIt) {
    const Exchange exchange(&swizzleInstanceMethod, Cat::describedClass(), "sound", "purr");
    EXPECT_EQ(Cat().performSelector("sound"), std::optional<Value>("prr"));
    EXPECT_EQ(Cat().performSelector("purr"), std::optional<Value>("..."));
    EXPECT_EQ(Cat("Ada").performSelector("name"), std::optional<Value>("Ada"));
}

TEST(Swizzling, ArgumentsAndResultsGoWithTheImplementation) {
    const Exchange exchange(&swizzleInstanceMethod, Animal::describedClass(), "name", "setName:");
    Animal animal("Ada");
    EXPECT_EQ(animal.performSelector("setName:"), std::optional<Value>("Ada"));
    EXPECT_EQ(animal.performSelector("name", std::array<std::optional<Value>, 1>{"Bea"}), std::nullopt);
    EXPECT_EQ(animal.name(), "Bea");
}

TEST(Swizzling, ClassMethodsAreExchanged) {
    const Exchange exchange(&swizzleClassMethod, Cat::describedClass(), "kingdom", "order");
    EXPECT_EQ(Cat::describedClass().performClassSelector("kingdom"), std::optional<Value>("Carnivora"));
    EXPECT_EQ(Animal::describedClass().performClassSelector("kingdom"), std::optional<Value>("Carnivora"));
    EXPECT_EQ(Cat::describedClass().performClassSelector("order"), std::optional<Value>("Animalia"));
}

TEST(Swizzling, ClassMethodsTakeArguments) {
    const ClassDescription& description = Cat::describedClass();
    EXPECT_EQ(description.performClassSelector("greetingFor:", std::array<std::optional<Value>, 1>{"Ada"}),
              std::optional<Value>("Hello, Ada"));
    EXPECT_THROW(description.performClassSelector("greetingFor:"), NSInvalidArgumentException);
    EXPECT_THROW(description.performClassSelector("name"), NSInvalidArgumentException);
}

TEST(Swizzling, CallsGoOnWhileMethodsAreExchanged) {
    std::thread exchanging([] {
        for (int round = 0; round < 200; ++round) {
            const Exchange exchange(&swizzleInstanceMethod, Animal::describedClass(), "sound", "motto");
        }
    });
    Animal animal;
    for (int round = 0; round < 500; ++round) {
        const std::optional<Value> sound = animal.performSelector("sound");
        EXPECT_TRUE(sound == std::optional<Value>("...") || sound == std::optional<Value>("eat"));
    }
    exchanging.join();
}

} // namespace
} // namespace qk
