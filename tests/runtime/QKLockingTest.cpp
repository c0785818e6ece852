// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKLocking.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/runtime/QKObjCRuntime.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace qk {
namespace {

bool canLockElsewhere(QKLocking& lock) {
    bool locked = false;
    std::thread([&] {
        locked = lock.tryLock();
        if (locked) {
            lock.unlock();
        }
    }).join();
    return locked;
}

TEST(NSRecursiveLock, ANewLockHasNoNameAndNoHolder) {
    const auto lock = NSRecursiveLock::init();
    EXPECT_EQ(lock->name(), std::nullopt);
    EXPECT_TRUE(canLockElsewhere(*lock));
}

TEST(NSRecursiveLock, ItsHolderTakesItAgainAndGivesItBackAsOften) {
    const auto lock = NSRecursiveLock::init();
    lock->lock();
    EXPECT_TRUE(lock->tryLock());
    lock->unlock();
    EXPECT_FALSE(canLockElsewhere(*lock));
    lock->unlock();
    EXPECT_TRUE(canLockElsewhere(*lock));
}

TEST(NSRecursiveLock, TheGuardsOfTheStandardLibraryTakeIt) {
    const auto lock = NSRecursiveLock::init();
    {
        const std::lock_guard guard(*lock);
        const std::unique_lock another(*lock, std::try_to_lock);
        EXPECT_TRUE(another.owns_lock());
        EXPECT_FALSE(canLockElsewhere(*lock));
    }
    EXPECT_TRUE(canLockElsewhere(*lock));
}

TEST(NSRecursiveLock, AdoptsTheProtocolByName) {
    const auto lock = NSRecursiveLock::init();
    EXPECT_TRUE(lock->conformsToProtocol("QKLocking"));
    EXPECT_EQ(QKObjCRuntime::selectorsOfOProtocol(QKLocking::describedProtocol()), (NSArray{"tryLock", "unlock"}));
    EXPECT_TRUE(lock->respondsToSelector("tryLock"));
    EXPECT_EQ(lock->performSelector("tryLock"), Value(true));
    EXPECT_FALSE(canLockElsewhere(*lock));
    lock->performSelector("unlock");
    EXPECT_TRUE(canLockElsewhere(*lock));
    lock->setValueForKey(Value("a lock"), "name");
    EXPECT_EQ(lock->name(), NSString("a lock"));
}

} // namespace
} // namespace qk
