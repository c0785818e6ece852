// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKSingleton.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

namespace {

using qk::ClassBuilder;
using qk::ClassDescription;
using qk::QKSingleton;

std::atomic<int> planetsMade = 0;

class Planet : public QKSingleton {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<Planet>("Planet", QKSingleton::describedClass()).build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

protected:
    Planet() { ++planetsMade; }
};

// Its making asks for another class's instance.
class Moon : public QKSingleton {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description = ClassBuilder<Moon>("Moon", QKSingleton::describedClass()).build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    std::shared_ptr<Planet> planet = QKSingleton::sharedInstance<Planet>();

protected:
    Moon() = default;
};

std::barrier<> birth(2);

// Two of them are made at the same time or not at all.
template <int Number>
class Twin : public QKSingleton {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<Twin>(Number == 1 ? "Castor" : "Pollux", QKSingleton::describedClass()).build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

protected:
    Twin() { birth.arrive_and_wait(); }
};

// Its end asks for another class's instance.
class Comet : public QKSingleton {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<Comet>("Comet", QKSingleton::describedClass()).build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    ~Comet() override { static_cast<void>(QKSingleton::sharedInstance<Planet>()); }

protected:
    Comet() = default;
};

class Singletons : public testing::Test {
protected:
    void SetUp() override {
        QKSingleton::resetSharedInstances();
        planetsMade = 0;
    }
    void TearDown() override { QKSingleton::resetSharedInstances(); }
};

TEST_F(Singletons, ClassHasOneInstance) {
    const auto planet = QKSingleton::sharedInstance<Planet>();
    ASSERT_NE(planet, nullptr);
    EXPECT_EQ(QKSingleton::sharedInstance<Planet>(), planet);
    EXPECT_EQ(planetsMade, 1);
}

TEST_F(Singletons, EachClassHasItsOwnInstance) {
    const std::shared_ptr<QKSingleton> planet = QKSingleton::sharedInstance<Planet>();
    const std::shared_ptr<QKSingleton> moon = QKSingleton::sharedInstance<Moon>();
    EXPECT_NE(planet, moon);
    EXPECT_EQ(&moon->classDescription(), &Moon::describedClass());
}

TEST_F(Singletons, MakingOneMayAskForAnother) {
    EXPECT_EQ(QKSingleton::sharedInstance<Moon>()->planet, QKSingleton::sharedInstance<Planet>());
}

TEST_F(Singletons, ResetOfOneClassDropsTheInstancesOfAll) {
    const auto planet = QKSingleton::sharedInstance<Planet>();
    const auto moon = QKSingleton::sharedInstance<Moon>();
    QKSingleton::resetSharedInstances(Moon::describedClass());
    EXPECT_NE(QKSingleton::sharedInstance<Planet>(), planet);
    EXPECT_NE(QKSingleton::sharedInstance<Moon>(), moon);
}

TEST_F(Singletons, DroppedInstanceMayAskForAnother) {
    static_cast<void>(QKSingleton::sharedInstance<Comet>());
    QKSingleton::resetSharedInstances();
    EXPECT_EQ(planetsMade, 1);
    EXPECT_NE(QKSingleton::sharedInstance<Planet>(), nullptr);
    EXPECT_EQ(planetsMade, 1);
}

TEST_F(Singletons, MakingOneDoesNotWaitForTheMakingOfAnother) {
    std::shared_ptr<QKSingleton> castor;
    std::thread other([&] { castor = QKSingleton::sharedInstance<Twin<1>>(); });
    const std::shared_ptr<QKSingleton> pollux = QKSingleton::sharedInstance<Twin<2>>();
    other.join();
    EXPECT_NE(castor, pollux);
}

TEST_F(Singletons, ManyThreadsMakeOneInstance) {
    constexpr int kThreads = 8;
    std::barrier start(kThreads);
    std::vector<std::shared_ptr<Planet>> seen(kThreads);
    std::vector<std::thread> threads;
    for (int index = 0; index < kThreads; ++index) {
        threads.emplace_back([&, index] {
            start.arrive_and_wait();
            // Some by way of the other class.
            seen[static_cast<std::size_t>(index)] =
                index % 2 == 0 ? QKSingleton::sharedInstance<Planet>() : QKSingleton::sharedInstance<Moon>()->planet;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(planetsMade, 1);
    for (const auto& planet : seen) {
        EXPECT_EQ(planet, seen.front());
    }
}

TEST_F(Singletons, ResetWhileOthersAskLeavesEveryAnswerWhole) {
    std::atomic<bool> isDone = false;
    std::thread resetting([&] {
        for (int count = 0; count < 200; ++count) {
            QKSingleton::resetSharedInstances();
        }
        isDone = true;
    });
    while (!isDone) {
        EXPECT_NE(QKSingleton::sharedInstance<Moon>()->planet, nullptr);
    }
    resetting.join();
}

} // namespace
