// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSInvocation.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"
#include "QKFoundation/platform/objects/ValueConversion.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

namespace qk {

/// What a class is at run time: its name, its superclass, its properties by key, its methods by selector and the
/// protocols that it adopts.
///
/// One description per class, built once by a `ClassBuilder` and never destroyed. Threads: any, at the same time.
class QK_EXPORT ClassDescription {
public:
    using Arguments = std::span<const std::optional<Value>>;

    /// A property. `set` is empty when it is read-only; it answers false for a value that the property cannot take.
    struct Property {
        std::function<std::optional<Value>(const NSObject&)> get;
        std::function<bool(NSObject&, const std::optional<Value>&)> set;
    };

    /// An instance method. `perform` answers false for arguments that do not fit; the result goes to `result`.
    struct Method {
        std::size_t argumentCount = 0;
        std::optional<Value> zeroResult; ///< what stands for the result of a call that was dropped
        std::function<bool(NSObject&, Arguments arguments, std::optional<Value>& result)> perform;
    };

    /// A class method.
    struct ClassMethod {
        std::size_t argumentCount = 0;
        std::function<bool(Arguments arguments, std::optional<Value>& result)> perform;
    };

    ClassDescription(NSString name, const ClassDescription* superclass);

    [[nodiscard]] const NSString& name() const noexcept { return name_; }

    /// Null for the root class.
    [[nodiscard]] const ClassDescription* superclass() const noexcept { return superclass_; }

    /// Whether this is `other` or inherits from it.
    [[nodiscard]] bool isSubclassOf(const ClassDescription& other) const noexcept;

    /// The property of this class or of the nearest superclass that has it; null when none does.
    [[nodiscard]] const Property* property(const NSString& key) const;

    /// `class_getInstanceMethod`. The method of this class or of the nearest superclass that has it; null when none
    /// does. It stays as it is while it is held, whatever is exchanged meanwhile.
    [[nodiscard]] std::shared_ptr<const Method> method(const NSString& selector) const;

    /// `class_getClassMethod`. The same of the class methods.
    [[nodiscard]] std::shared_ptr<const ClassMethod> classMethod(const NSString& selector) const;

    /// `performSelector:` of the class. As `NSObject::performSelector`.
    std::optional<Value> performClassSelector(const NSString& selector, Arguments arguments = {}) const;

    /// `method_exchangeImplementations` of two instance methods, or two class methods, that this class has or inherits,
    /// where they are: an inherited one is exchanged for all classes that inherit it. Does nothing when one is missing.
    /// Calls by selector see it; C++ calls of the member functions do not.
    void exchangeMethods(const NSString& selector, const NSString& with) const;
    void exchangeClassMethods(const NSString& selector, const NSString& with) const;

    /// Whether this class or a superclass adopts `protocol`.
    [[nodiscard]] bool conformsToProtocol(const NSString& protocol) const;

    /// This class's own properties, without the inherited ones, ascending by name.
    [[nodiscard]] const std::map<NSString, Property>& ownProperties() const noexcept { return properties_; }

private:
    template <typename Class>
    friend class ClassBuilder;

    template <typename SlotsOf>
    auto* slotOf(const NSString& selector, SlotsOf slotsOf) const;

    NSString name_;
    const ClassDescription* superclass_;
    std::map<NSString, Property> properties_;
    // The names are fixed once the class is built; what they lead to is exchanged under a lock.
    mutable std::map<NSString, std::shared_ptr<const Method>> methods_;
    mutable std::map<NSString, std::shared_ptr<const ClassMethod>> classMethods_;
    std::set<NSString> protocols_;
};

/// Builds the description of `Class` from its member functions:
///
///     const ClassDescription& Door::describedClass() {
///         static const ClassDescription& description = ClassBuilder<Door>("Door", NSObject::describedClass())
///                                                          .property("open", &Door::isOpen, &Door::setOpen)
///                                                          .method("knock:", &Door::knock)
///                                                          .build();
///         return description;
///     }
///
/// Properties and arguments may be numbers, value types, `Value`, optionals and shared pointers of them.
template <typename Class>
class ClassBuilder {
public:
    ClassBuilder(NSString name, const ClassDescription& superclass)
        : description_(std::make_unique<ClassDescription>(std::move(name), &superclass)) {}

    /// Adds a read-only property.
    template <typename Get>
    ClassBuilder& property(const NSString& key, Get get) {
        description_->properties_[key] = {getter(get), {}};
        return *this;
    }

    /// Adds a property that can be set.
    template <typename Get, typename Argument>
    ClassBuilder& property(const NSString& key, Get get, void (Class::*set)(Argument)) {
        description_->properties_[key] = {getter(get), [set](NSObject& object, const std::optional<Value>& value) {
                                              auto typed = internal::fromValue<std::remove_cvref_t<Argument>>(value);
                                              if (!typed.has_value()) {
                                                  return false;
                                              }
                                              (static_cast<Class&>(object).*set)(*std::move(typed));
                                              return true;
                                          }};
        return *this;
    }

    /// Adds a method.
    template <typename Result, typename... Arguments>
    ClassBuilder& method(const NSString& selector, Result (Class::*member)(Arguments...)) {
        return add<Class, Result, Arguments...>(selector, member);
    }
    template <typename Result, typename... Arguments>
    ClassBuilder& method(const NSString& selector, Result (Class::*member)(Arguments...) const) {
        return add<const Class, Result, Arguments...>(selector, member);
    }

    /// Adds a class method.
    template <typename Result, typename... Arguments>
    ClassBuilder& classMethod(const NSString& selector, Result (*function)(Arguments...)) {
        description_->classMethods_[selector] =
            std::make_shared<const ClassDescription::ClassMethod>(ClassDescription::ClassMethod{
                sizeof...(Arguments), [function](ClassDescription::Arguments values, std::optional<Value>& result) {
                    return call<Result, Arguments...>(function, values, result,
                                                      std::index_sequence_for<Arguments...>{});
                }});
        return *this;
    }

    /// Adds a protocol that the class adopts.
    ClassBuilder& protocol(const ProtocolDescription& description) { return protocol(description.name()); }

    /// Adds the name of a protocol that the class adopts.
    ClassBuilder& protocol(const NSString& name) {
        description_->protocols_.insert(name);
        return *this;
    }

    /// The finished description, which is never destroyed.
    [[nodiscard]] const ClassDescription& build() { return *description_.release(); }

private:
    template <typename Get>
    static std::function<std::optional<Value>(const NSObject&)> getter(Get get) {
        return [get](const NSObject& object) {
            return internal::toValue(std::invoke(get, static_cast<const Class&>(object)));
        };
    }

    template <typename Receiver, typename Result, typename... Arguments, typename Member>
    ClassBuilder& add(const NSString& selector, Member member) {
        std::optional<Value> zeroResult;
        if constexpr (std::is_arithmetic_v<Result>) {
            zeroResult = Value(Result{});
        }
        description_->methods_[selector] = std::make_shared<const ClassDescription::Method>(ClassDescription::Method{
            sizeof...(Arguments), std::move(zeroResult),
            [member](NSObject& object, ClassDescription::Arguments values, std::optional<Value>& result) {
                const auto bound = [member, &receiver = static_cast<Receiver&>(object)](auto&&... arguments) -> Result {
                    return (receiver.*member)(std::forward<decltype(arguments)>(arguments)...);
                };
                return call<Result, Arguments...>(bound, values, result, std::index_sequence_for<Arguments...>{});
            }});
        return *this;
    }

    template <typename Result, typename... Arguments, typename Function, std::size_t... Index>
    static bool call(const Function& function, [[maybe_unused]] ClassDescription::Arguments values,
                     std::optional<Value>& result, std::index_sequence<Index...> /*indexes*/) {
        std::tuple typed{internal::fromValue<std::remove_cvref_t<Arguments>>(values[Index])...};
        if (!(std::get<Index>(typed).has_value() && ...)) {
            return false;
        }
        if constexpr (std::is_void_v<Result>) {
            function(std::move(*std::get<Index>(typed))...);
        } else {
            result = internal::toValue(function(std::move(*std::get<Index>(typed))...));
        }
        return true;
    }

    std::unique_ptr<ClassDescription> description_;
};

} // namespace qk
