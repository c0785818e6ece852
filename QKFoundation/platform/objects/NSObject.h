// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSInvocation.h"
#include "QKFoundation/platform/objects/NSKeyValueObserving.h"
#include "QKFoundation/platform/values/Value.h"

#include <atomic>
#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace qk {

class ClassDescription;

namespace internal {
class Associations;
class Observations;
struct DeleteObservations {
    QK_EXPORT void operator()(Observations* observations) const noexcept;
};
} // namespace internal

/// The root of all classes with identity. Objects live in `std::shared_ptr`; nothing copies them.
///
/// Everything that is looked up by name at run time (keys, selectors, protocols) goes through the one
/// `ClassDescription` of the object's class.
class QK_EXPORT NSObject : public NSObjectProtocol, public std::enable_shared_from_this<NSObject> {
public:
    NSObject() = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;

    /// Lets go of the values that are associated with the object.
    ~NSObject() override;

    /// The description of this class itself.
    [[nodiscard]] static const ClassDescription& describedClass();

    /// `class`. The description of the object's own class. Every class that adds to its superclass overrides it.
    [[nodiscard]] virtual const ClassDescription& classDescription() const;

    /// `isEqual:`. Whether `other` is this very object; subclasses may compare content.
    [[nodiscard]] bool isEqual(const Value& other) const override;

    [[nodiscard]] std::size_t hash() const override;

    /// `description`. The class's name and the address, "<QKOSUpdateParser: 0x7f0012345678>"; subclasses may say more.
    [[nodiscard]] NSString description() const override;

    /// `isKindOfClass:`. Whether the object's class is `description`'s or inherits from it.
    [[nodiscard]] bool isKindOfClass(const ClassDescription& description) const;

    /// `conformsToProtocol:`. Whether the object's class or one that it inherits from adopts `protocol`.
    [[nodiscard]] bool conformsToProtocol(const NSString& protocol) const;

    /// `respondsToSelector:`. Whether a method of that name can be performed.
    [[nodiscard]] virtual bool respondsToSelector(const NSString& selector) const;

    /// `methodSignatureForSelector:`. What the method of that name takes and gives; nothing when there is none. An
    /// object that forwards messages answers for those too.
    [[nodiscard]] virtual std::optional<NSMethodSignature> methodSignatureForSelector(const NSString& selector) const;

    /// `forwardInvocation:`. Called by `performSelector` for a message that the class has no method for but that has a
    /// signature. Calls `doesNotRecognizeSelector` here.
    virtual void forwardInvocation(NSInvocation& invocation);

    /// `performSelector:`. Calls the method by its name; nothing is the answer of one that returns nothing or nil.
    /// A message without a method is forwarded where there is a signature for it (`forwardInvocation`). Raises
    /// `NSInvalidArgumentException` when there is none (by `doesNotRecognizeSelector`), or the arguments do not fit.
    std::optional<Value> performSelector(const NSString& selector,
                                         std::span<const std::optional<Value>> arguments = {});

    /// `doesNotRecognizeSelector:`. Raises `NSInvalidArgumentException` in the name of a method that the object does
    /// not have, or that its class leaves to subclasses. Where an override returns, that method's answer is nothing, ""
    /// or 0.
    virtual void doesNotRecognizeSelector(const NSString& selector) const;

    /// `valueForKey:`. The property's value, scalars as numbers; nothing for nil. Raises `NSUndefinedKeyException` for
    /// a key that the class does not have.
    [[nodiscard]] std::optional<Value> valueForKey(const NSString& key) const;

    /// `setValue:forKey:`. Sets the property. Raises `NSUndefinedKeyException` for a key that the class does not have
    /// or that is read-only, and `NSInvalidArgumentException` for a value that the property cannot take (nothing for a
    /// scalar among them).
    void setValueForKey(const std::optional<Value>& value, const NSString& key);

    /// `dictionaryWithValuesForKeys:`. The values of `keys`, the null marker for nil. Raises as `valueForKey` does,
    /// before anything is returned.
    [[nodiscard]] NSDictionary dictionaryWithValuesForKeys(const std::vector<NSString>& keys) const;

    // Key-value observation: being told of changes of a property. A property can be observed when its setter says that
    // it changes it. Threads: those of the object; observers are called at once, where the change is made, in the order
    // in which they were added.

    /// `addObserver:forKeyPath:options:context:`. From the next change on, `observer` is told of every change of the
    /// property of that key, also when the value stays equal; with the option Initial it is told once now. One that is
    /// added twice is told twice. Paths of several keys are not observed.
    /// The observer is not retained and takes itself away before it dies; one that lived in a `std::shared_ptr` when it
    /// was added, and died without that, is told nothing more. `context` is handed back as it is.
    /// Raises `NSUndefinedKeyException` for Initial and New together when the object does not have the key.
    void addObserver(NSObject& observer, const NSString& forKeyPath, NSKeyValueObservingOptions options,
                     void* context = nullptr);

    /// `removeObserver:forKeyPath:`. Takes the latest registration of `observer` for that key away; it is told nothing
    /// more, of a change that is being reported neither. Raises `NSRangeException` when there is none.
    void removeObserver(NSObject& observer, const NSString& forKeyPath);

    /// `removeObserver:forKeyPath:context:`. As above, of those with that context.
    void removeObserver(NSObject& observer, const NSString& forKeyPath, void* context);

    /// `observeValueForKeyPath:ofObject:change:context:`. What an observer overrides. `change` has the kind and, as the
    /// options say, the old and the new value (see `NSKeyValueObserving.h`). Both objects live until it returns.
    /// Raises an exception named "NSInternalInconsistencyException" here: nobody has dealt with the change.
    virtual void observeValueForKeyPath(const NSString& keyPath, NSObject& ofObject, const NSDictionary& change,
                                        void* context);

    /// `willChangeValueForKey:` and `didChangeValueForKey:`. Around a change that is not made by a setter of its own;
    /// each of the first has one of the second after it. Does nothing while nobody observes.
    void willChangeValueForKey(const NSString& key);
    void didChangeValueForKey(const NSString& key);

protected:
    /// What the setter of a property that can be observed is made of: `store` changes the variable, and the observers
    /// of `key` are told. Costs one comparison while nobody observes the object. When `store` or an observer raises,
    /// the change is over and those who were not told yet are not told.
    template <std::size_t N, std::invocable Store>
    void changeValueForKey(const char (&key)[N], Store&& store) {
        if (observations_ == nullptr) {
            std::invoke(std::forward<Store>(store));
        } else {
            changeObservedValue(NSString(key), std::ref(store));
        }
    }

private:
    friend class internal::Observations;
    friend class internal::Associations;

    std::optional<Value> forward(const NSString& selector, std::span<const std::optional<Value>> arguments);

    void changeObservedValue(const NSString& key, const std::function<void()>& store);

    std::unique_ptr<internal::Observations, internal::DeleteObservations> observations_; // null while nobody observes
    std::atomic<internal::Associations*> associations_ = nullptr; // owned; made with the first associated value
};

} // namespace qk
