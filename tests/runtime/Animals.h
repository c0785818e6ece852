// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSCopying.h"

#include <memory>
#include <utility>

/// A small family of classes for the tests of what is looked up at run time.
namespace qk::tests {

class Animal : public NSObject, public NSCopying {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<Animal>("Animal", NSObject::describedClass())
                .method("name", &Animal::name)
                .method("legs", &Animal::legs)
                .method("sound", &Animal::sound)
                .method("motto", &Animal::motto)
                .method("setName:", &Animal::setName)
                .classMethod(
                    "kingdom", +[] { return NSString("Animalia"); })
                .classMethod(
                    "greetingFor:", +[](const NSString& who) { return "Hello, " + who; })
                .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    explicit Animal(NSString name = "nobody") : name_(std::move(name)) {}

    const NSString& name() const { return name_; }
    void setName(const NSString& name) { name_ = name; }
    std::int64_t legs() const { return 4; }
    NSString sound() const { return "..."; }
    NSString motto() const { return "eat"; }

    std::shared_ptr<NSObject> copyWithZone() const override { return std::make_shared<Animal>(name_); }

private:
    NSString name_;
};

class Cat : public Animal {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description = ClassBuilder<Cat>("Cat", Animal::describedClass())
                                                         .method("purr", &Cat::purr)
                                                         .classMethod(
                                                             "order", +[] { return NSString("Carnivora"); })
                                                         .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    using Animal::Animal;
    NSString purr() const { return "prr"; }
};

class Stone : public NSObject {};

} // namespace qk::tests
