// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace qk {

class ClassDescription;

/// The root of all classes with identity. Objects live in `std::shared_ptr`; nothing copies them.
///
/// Everything that is looked up by name at run time (keys, selectors, protocols) goes through the one
/// `ClassDescription` of the object's class.
class QK_EXPORT NSObject : public NSObjectProtocol, public std::enable_shared_from_this<NSObject> {
public:
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
    [[nodiscard]] bool respondsToSelector(const NSString& selector) const;

    /// `performSelector:`. Calls the method by its name; nothing is the answer of one that returns nothing or nil.
    /// Raises `NSInvalidArgumentException` when the class has no such method, or the arguments do not fit it.
    std::optional<Value> performSelector(const NSString& selector,
                                         std::span<const std::optional<Value>> arguments = {});

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
};

} // namespace qk
