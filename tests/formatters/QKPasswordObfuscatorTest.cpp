// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKPasswordObfuscator.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace qk {
namespace {

std::shared_ptr<QKPasswordObfuscator> with(const std::optional<NSString>& password) {
    return QKPasswordObfuscator::passwordObfuscatorWithPrivatePassword(password);
}

TEST(QKPasswordObfuscator, NewOneHasTheEmptyPassword) {
    for (const auto& obfuscator : {QKPasswordObfuscator::init(), QKPasswordObfuscator::passwordObfuscator()}) {
        EXPECT_EQ(obfuscator->privatePassword(), "");
        EXPECT_EQ(obfuscator->displayPassword(), "");
    }
}

TEST(QKPasswordObfuscator, NoPasswordShowsNoAsterisks) {
    const auto obfuscator = with("abc");
    obfuscator->setPrivatePassword(std::nullopt);
    EXPECT_EQ(obfuscator->privatePassword(), std::nullopt);
    EXPECT_EQ(obfuscator->displayPassword(), "");
    EXPECT_EQ(with(std::nullopt)->privatePassword(), std::nullopt);
    EXPECT_EQ(with(std::nullopt)->displayPassword(), "");
}

TEST(QKPasswordObfuscator, NoDisplayTextMeansNoPassword) {
    const auto obfuscator = with("abc");
    obfuscator->setDisplayPassword(std::nullopt);
    EXPECT_EQ(obfuscator->privatePassword(), std::nullopt);
    EXPECT_EQ(obfuscator->displayPassword(), "");
}

TEST(QKPasswordObfuscator, ShowsAnAsteriskForEachCharacter) {
    EXPECT_EQ(with("abc")->displayPassword(), "***");
    EXPECT_EQ(with("abc")->privatePassword(), "abc");
    EXPECT_EQ(with("\u00e9\U0001F600")->displayPassword(), "***") << "two for one outside of the basic plane";
    EXPECT_EQ(with(NSString(std::u16string(1, u'\0')))->displayPassword(), "*");
    EXPECT_EQ(with(NSString(std::u16string(1, static_cast<char16_t>(0xD800))))->displayPassword(), "*");
    EXPECT_EQ(with(NSString(std::u16string(100000, u'x')))->displayPassword()->length(), 100000U);
}

TEST(QKPasswordObfuscator, TypedDisplayTextBecomesThePassword) {
    const auto obfuscator = with("abc");
    obfuscator->setDisplayPassword("xy");
    EXPECT_EQ(obfuscator->privatePassword(), "xy");
    EXPECT_EQ(obfuscator->displayPassword(), "**");
    obfuscator->setDisplayPassword("");
    EXPECT_EQ(obfuscator->privatePassword(), "");
    EXPECT_EQ(obfuscator->displayPassword(), "");
}

TEST(QKPasswordObfuscator, ShownAsterisksSetAgainBecomeThePassword) {
    const auto obfuscator = with("abc");
    obfuscator->setDisplayPassword("***");
    EXPECT_EQ(obfuscator->privatePassword(), "***");
    EXPECT_EQ(obfuscator->displayPassword(), "***");
    obfuscator->setDisplayPassword("***d");
    EXPECT_EQ(obfuscator->privatePassword(), "***d");
    EXPECT_EQ(obfuscator->displayPassword(), "****");
}

TEST(QKPasswordObfuscator, KeepsItsPropertiesInStepAgainAndAgain) {
    const auto obfuscator = QKPasswordObfuscator::init();
    for (std::size_t length = 0; length < 20; ++length) {
        obfuscator->setPrivatePassword(NSString(std::u16string(length, u'p')));
        EXPECT_EQ(obfuscator->displayPassword(), obfuscator->obfuscatedPasswordWithLength(length));
        obfuscator->setDisplayPassword(NSString(std::u16string(length, u'd')));
        EXPECT_EQ(obfuscator->privatePassword(), NSString(std::u16string(length, u'd')));
        EXPECT_EQ(obfuscator->displayPassword(), obfuscator->obfuscatedPasswordWithLength(length));
    }
}

TEST(QKPasswordObfuscator, ItsOwnTextsMayBeSet) {
    const auto obfuscator = with("abc");
    obfuscator->setDisplayPassword(obfuscator->privatePassword());
    EXPECT_EQ(obfuscator->privatePassword(), "abc");
    obfuscator->setPrivatePassword(obfuscator->displayPassword());
    EXPECT_EQ(obfuscator->privatePassword(), "***");
}

TEST(QKPasswordObfuscator, PropertiesMayBeSetByKey) {
    const auto obfuscator = QKPasswordObfuscator::init();
    obfuscator->setValueForKey("abcd", "displayPassword");
    EXPECT_EQ(obfuscator->valueForKey("privatePassword"), Value("abcd"));
    EXPECT_EQ(obfuscator->valueForKey("displayPassword"), Value("****"));
    obfuscator->setValueForKey(std::nullopt, "privatePassword");
    EXPECT_EQ(obfuscator->valueForKey("privatePassword"), std::nullopt);
}

TEST(QKPasswordObfuscator, MakesAsterisksOfAnyNumber) {
    const auto obfuscator = QKPasswordObfuscator::init();
    EXPECT_EQ(obfuscator->obfuscatedPasswordWithLength(0), "");
    EXPECT_EQ(obfuscator->obfuscatedPasswordWithLength(5), "*****");
    EXPECT_EQ(obfuscator->obfuscatedPasswordWithLength(8), QKPasswordObfuscatorObfuscationString);
}

TEST(QKPasswordObfuscator, CopyHasThePasswordAndItsOwnLife) {
    const auto original = with("abc");
    const auto copy = original->copy();
    EXPECT_NE(copy, original);
    EXPECT_TRUE(copy->isEqual(original));
    EXPECT_EQ(copy->displayPassword(), "***");
    EXPECT_EQ(copy->privatePassword()->storage(), original->privatePassword()->storage()) << "the same text";
    copy->setPrivatePassword("other");
    EXPECT_EQ(original->privatePassword(), "abc");
    EXPECT_EQ(with(std::nullopt)->copy()->privatePassword(), std::nullopt);
}

TEST(QKPasswordObfuscator, EqualWhenThePasswordsAre) {
    EXPECT_TRUE(with("abc")->isEqual(with("abc")));
    EXPECT_EQ(with("abc")->hash(), with("abc")->hash());
    EXPECT_FALSE(with("abc")->isEqual(with("xyz"))) << "the display text plays no part";
    EXPECT_TRUE(with(std::nullopt)->isEqual(with(std::nullopt)));
    EXPECT_FALSE(with(std::nullopt)->isEqual(with("")));
    EXPECT_FALSE(with("")->isEqual(with(std::nullopt)));
    EXPECT_FALSE(with("\u00e9")->isEqual(with("e\u0301"))) << "literally";
    EXPECT_EQ(with(std::nullopt)->hash(), 0U);
    EXPECT_FALSE(with("abc")->isEqual("abc"));
    EXPECT_FALSE(with("abc")->isEqual(std::make_shared<NSObject>()));
    EXPECT_FALSE(with("abc")->isEqual(NSNull{}));
}

class Derived : public QKPasswordObfuscator {};

TEST(QKPasswordObfuscator, CanBeDerivedByAHost) {
    const auto derived = QKPasswordObfuscator::init<Derived>();
    EXPECT_EQ(derived->displayPassword(), "");
    derived->setDisplayPassword("abc");
    EXPECT_EQ(derived->privatePassword(), "abc");
    EXPECT_TRUE(with("abc")->isEqual(derived));
    EXPECT_TRUE(derived->isEqual(with("abc")));
}

class Binding : public NSObject {
public:
    void observeValueForKeyPath(const NSString& /*keyPath*/, NSObject& /*ofObject*/, const NSDictionary& change,
                                void* /*context*/) override {
        shown.push_back(*change.objectForKey(NSKeyValueChangeNewKey));
        if (raises) {
            throw std::runtime_error("the field is gone");
        }
        if (const auto action = std::exchange(once, nullptr)) {
            action();
        }
    }
    std::vector<Value> shown;
    bool raises = false;
    std::function<void()> once;
};

TEST(QKPasswordObfuscator, BoundFieldEndsUpWithTheAsterisks) {
    const auto obfuscator = QKPasswordObfuscator::init();
    const auto binding = std::make_shared<Binding>();
    obfuscator->addObserver(*binding, "displayPassword", NSKeyValueObservingOptions::New);
    obfuscator->setPrivatePassword("abc");
    EXPECT_EQ(binding->shown, (std::vector<Value>{"***"}));
    obfuscator->setDisplayPassword("xy");
    EXPECT_NE(std::ranges::find(binding->shown, Value("**")), binding->shown.end());
    EXPECT_EQ(obfuscator->displayPassword(), "**");
}

TEST(QKPasswordObfuscator, TypedTextIsToldToTheObserversOfThePassword) {
    const auto obfuscator = with("abc");
    const auto binding = std::make_shared<Binding>();
    obfuscator->addObserver(*binding, "privatePassword", NSKeyValueObservingOptions::New);
    obfuscator->setDisplayPassword("xy");
    EXPECT_EQ(binding->shown, (std::vector<Value>{"xy"}));
}

TEST(QKPasswordObfuscator, DisplayTextThatIsSetWhileAsterisksAreShownIsNoPassword) {
    const auto obfuscator = QKPasswordObfuscator::init();
    const auto binding = std::make_shared<Binding>();
    obfuscator->addObserver(*binding, "displayPassword", NSKeyValueObservingOptions::New);
    binding->once = [&] { obfuscator->setDisplayPassword("xy"); };
    obfuscator->setPrivatePassword("abc");
    EXPECT_EQ(binding->shown, (std::vector<Value>{"***", "xy"}));
    EXPECT_EQ(obfuscator->privatePassword(), "abc");
    EXPECT_EQ(obfuscator->displayPassword(), "xy");
    obfuscator->setDisplayPassword("z");
    EXPECT_EQ(obfuscator->privatePassword(), "z") << "and observes itself again";
}

TEST(QKPasswordObfuscator, GoesOnObservingItselfWhenAnotherObserverRaises) {
    const auto obfuscator = QKPasswordObfuscator::init();
    const auto binding = std::make_shared<Binding>();
    obfuscator->addObserver(*binding, "displayPassword", NSKeyValueObservingOptions::New);
    binding->raises = true;
    EXPECT_THROW(obfuscator->setPrivatePassword("abc"), std::runtime_error);
    binding->raises = false;
    obfuscator->setDisplayPassword("xy");
    EXPECT_EQ(obfuscator->privatePassword(), "xy");
    EXPECT_EQ(obfuscator->displayPassword(), "**");
}

TEST(QKPasswordObfuscator, IgnoresOtherKeys) {
    const auto obfuscator = with("abc");
    obfuscator->observeValueForKeyPath("another", *obfuscator, {}, nullptr);
    EXPECT_EQ(obfuscator->privatePassword(), "abc");
    EXPECT_EQ(obfuscator->displayPassword(), "***");
}

TEST(QKPasswordObfuscator, DiesWithItsObservationsOrWithoutThem) {
    auto obfuscator = with("abc");
    const std::weak_ptr<QKPasswordObfuscator> life = obfuscator;
    obfuscator.reset();
    EXPECT_TRUE(life.expired()) << "observing oneself is no ownership";
    obfuscator = with("abc");
    obfuscator->removeObserver(*obfuscator, "displayPassword");
    obfuscator->removeObserver(*obfuscator, "privatePassword");
    obfuscator.reset();
}

TEST(QKPasswordObfuscator, IsDescribed) {
    const auto obfuscator = with("abc");
    EXPECT_TRUE(obfuscator->conformsToProtocol("NSCopying"));
    EXPECT_EQ(obfuscator->performSelector("displayPassword"), Value("***"));
    EXPECT_EQ(obfuscator->performSelector("obfuscatedPasswordWithLength:", std::vector<std::optional<Value>>{2}),
              Value("**"));
    EXPECT_FALSE(obfuscator->description().contains(u"abc")) << "a log shows no password";
}

} // namespace
} // namespace qk
