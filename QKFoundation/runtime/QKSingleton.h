// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <concepts>
#include <functional>
#include <memory>

namespace qk {

/// `QKSingleton`: a class of which each subclass has one shared instance, made when it is first asked for.
///
///     class Settings : public QKSingleton {
///     public:
///         static const ClassDescription& describedClass();
///         const ClassDescription& classDescription() const override;
///         static std::shared_ptr<Settings> sharedInstance() { return QKSingleton::sharedInstance<Settings>(); }
///
///     protected:
///         Settings() = default; // runs once, under the lock of this class alone
///     };
///
/// Instances are kept by the name of the class. Threads: any, at the same time. The making of one class's instance
/// holds that class's own recursive lock and nothing else, so a constructor may ask for the shared instances of other
/// classes. A true cycle (the constructors of two classes that each ask for the other's) has no answer: on one thread
/// it is an endless recursion, on two threads the two wait for each other for ever.
class QK_EXPORT QKSingleton : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `sharedInstance`. The one instance of `C`; never null.
    template <std::derived_from<QKSingleton> C>
    [[nodiscard]] static std::shared_ptr<C> sharedInstance() {
        struct Made final : C {};
        return std::static_pointer_cast<C>(sharedInstance(
            C::describedClass(), [] { return std::static_pointer_cast<QKSingleton>(std::make_shared<Made>()); }));
    }

    /// `resetSharedInstances`. Drops the shared instances of all classes, whichever class is asked, under the lock of
    /// `receiver`. Who still holds one keeps it.
    static void resetSharedInstances(const ClassDescription& receiver = describedClass());

protected:
    QKSingleton() = default;

private:
    [[nodiscard]] static std::shared_ptr<QKSingleton>
    sharedInstance(const ClassDescription& description, const std::function<std::shared_ptr<QKSingleton>()>& make);
};

} // namespace qk
