// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/QKLocking.h"

#include <memory>
#include <mutex>
#include <optional>

namespace qk {

/// `NSRecursiveLock`: a lock that the thread which holds it may take again, and gives back as often. `std::lock_guard`
/// and `std::unique_lock` take it too. Threads: any; each unlocks only what it locked itself.
class QK_EXPORT NSRecursiveLock : public NSObject, public QKLocking {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. A lock that nobody holds.
    [[nodiscard]] static std::shared_ptr<NSRecursiveLock> init();

    /// `lock`. Waits until no other thread holds the lock.
    void lock();

    /// `tryLock`. False when another thread holds the lock.
    [[nodiscard]] bool tryLock() override;
    [[nodiscard]] bool try_lock() { return tryLock(); }

    /// `unlock`. Takes back one `lock` or successful `tryLock` of the calling thread.
    void unlock() override;

    /// `name`. For people who look for the lock; nothing at first. Not guarded: set it before other threads ask.
    [[nodiscard]] const std::optional<NSString>& name() const noexcept { return name_; }
    void setName(const std::optional<NSString>& name) { name_ = name; }

private:
    NSRecursiveLock() = default;

    std::recursive_mutex mutex_;
    std::optional<NSString> name_;
};

} // namespace qk
