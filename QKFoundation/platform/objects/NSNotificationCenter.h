// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>
#include <optional>

namespace qk {

/// A notice that something happened: its name, the object that it is about (null for none) and more about it.
/// Immutable. Threads: as the object that it is about.
class QK_EXPORT NSNotification : public NSObject {
public:
    /// `initWithName:object:userInfo:`.
    [[nodiscard]] static std::shared_ptr<NSNotification> initWithName(const NSString& name,
                                                                      const std::shared_ptr<NSObject>& object,
                                                                      const std::optional<NSDictionary>& userInfo = {});

    [[nodiscard]] const NSString& name() const noexcept { return name_; }
    [[nodiscard]] const std::shared_ptr<NSObject>& object() const noexcept { return object_; }
    [[nodiscard]] const std::optional<NSDictionary>& userInfo() const noexcept { return userInfo_; }

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

private:
    NSNotification(NSString name, std::shared_ptr<NSObject> object, std::optional<NSDictionary> userInfo);

    NSString name_;
    std::shared_ptr<NSObject> object_;
    std::optional<NSDictionary> userInfo_;
};

/// Hands notifications of this process to those who asked for them, at once and on the thread that posts them, in the
/// order in which they asked.
///
/// Threads: any, at the same time. No lock is held while an observer is called: it may add, remove and post.
class QK_EXPORT NSNotificationCenter {
public:
    NSNotificationCenter();
    NSNotificationCenter(const NSNotificationCenter&) = delete;
    NSNotificationCenter& operator=(const NSNotificationCenter&) = delete;
    ~NSNotificationCenter();

    /// `defaultCenter`. The one of the process, never destroyed.
    [[nodiscard]] static NSNotificationCenter& defaultCenter();

    /// `addObserver:selector:name:object:`. `selector` of `observer` is performed with each notification of that name
    /// (nothing: of any) about that object (null: about any or none). Asked twice, it is performed twice. The observer
    /// is not retained; one that lives in a `std::shared_ptr` lives until a call that has begun returns, and when it
    /// died without removing itself it is told nothing more. The object is not retained either, nor mistaken for
    /// another at its address when it has died.
    void addObserver(NSObject& observer, const NSString& selector, const std::optional<NSString>& name,
                     const NSObject* object);

    /// `removeObserver:name:object:`. Takes every registration of `observer` away that was made for that name and that
    /// object; nothing and null stand for all names and objects. A call that another thread has begun may still run.
    void removeObserver(const NSObject& observer, const std::optional<NSString>& name, const NSObject* object);

    /// `removeObserver:`. Takes all registrations of `observer` away.
    void removeObserver(const NSObject& observer);

    /// `postNotificationName:object:userInfo:`. Those who have asked by now are told, but for those that are removed
    /// before it is their turn. What one of them raises goes through, and those behind it are not told.
    void postNotificationName(const NSString& name, const std::shared_ptr<NSObject>& object,
                              const std::optional<NSDictionary>& userInfo = {});

private:
    struct Registrations;
    std::unique_ptr<Registrations> registrations_;
};

} // namespace qk
