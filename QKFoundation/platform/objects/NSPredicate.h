// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qk {

/// A condition that objects meet or do not meet, parsed from a text such as "linkActive = YES AND builtin = YES" and
/// evaluated through key-value look-up. Immutable. Threads: any, at the same time, as far as the objects allow.
class QK_EXPORT NSPredicate : public NSObject {
public:
    /// The value of a key path; nothing for nil.
    using Lookup = std::function<std::optional<Value>(const NSString& keyPath)>;

    /// `predicateWithFormat:argumentArray:`. Each "%@" stands for the next argument as a constant, each "%K" for the
    /// next as a key path; "%d", "%i", "%u" and "%f" stand for numbers. Inside quotation marks they are plain text.
    /// Raises `NSInvalidArgumentException` for a text that is no predicate, or whose parts are nested more than 200
    /// deep, and when there are fewer arguments than it takes or they are of the wrong kind.
    ///
    /// A condition is a comparison of two values, and AND (&&), OR (||), NOT (!) and parentheses join them; AND binds
    /// closer than OR. TRUEPREDICATE and FALSEPREDICATE always and never hold. Key words may be in any case. Values are
    /// key paths (SELF is the object itself; "#" before one that looks like a key word), numbers, texts in either
    /// quotation marks, YES, NO, TRUE, FALSE, NULL, NIL, and lists of values in braces. They are compared by
    /// - = == != <> < > <= =< >= =>; BETWEEN two bounds, which belong to it;
    /// - BEGINSWITH, ENDSWITH, CONTAINS, LIKE ("?" for one unit, "*" for any number of units) between texts;
    /// - IN and CONTAINS for an element of a list or a part of a text.
    /// [c] behind the comparison lets the case of letters be. ANY (SOME), ALL or NONE in front of it is about the
    /// elements of the value on the left. MATCHES, [d], variables, functions and arithmetic are not supported.
    [[nodiscard]] static std::shared_ptr<const NSPredicate>
    predicateWithFormat(const NSString& format, const std::vector<Value>& arguments = {});

    /// `evaluateWithObject:`. Whether the object's values meet the condition; a key path leads through objects,
    /// dictionaries, and arrays of them. Raises `NSUndefinedKeyException` for a key that the object does not have.
    [[nodiscard]] bool evaluateWithObject(const NSObject& object) const;

    /// Whether what `lookup` answers meets the condition. A part that does not matter any more is not looked up.
    ///
    /// Values that do not fit together are not equal, in no order and no part of each other. The null marker is nil,
    /// which equals nil alone; booleans are numbers. Deliberate: an array is equal to a value that is no array when one
    /// of its elements is, since attributes of several values (the types of a file, say) are compared that way.
    [[nodiscard]] virtual bool evaluateWithLookup(const Lookup& lookup) const = 0;

    /// `predicateFormat`. The condition as a text that `predicateWithFormat` reads as the same condition. Arguments
    /// that no text can write (data, URLs, dictionaries, objects) are only shown.
    [[nodiscard]] virtual NSString predicateFormat() const = 0;

    /// The key paths that the condition asks for, without repetition, in the order of the text.
    [[nodiscard]] virtual std::vector<NSString> keyPaths() const = 0;

    /// Is `predicateFormat`.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;
};

/// `NSCompoundPredicate`: predicates joined by AND, OR or NOT. Making one raises `NSInvalidArgumentException` for a
/// null pointer, and when predicates are nested more than 200 deep.
class QK_EXPORT NSCompoundPredicate : public NSPredicate {
public:
    using Subpredicates = std::vector<std::shared_ptr<const NSPredicate>>;

    /// `andPredicateWithSubpredicates:`. All of them; true when there are none.
    [[nodiscard]] static std::shared_ptr<const NSCompoundPredicate>
    andPredicateWithSubpredicates(Subpredicates subpredicates);

    /// `orPredicateWithSubpredicates:`. At least one of them; false when there are none.
    [[nodiscard]] static std::shared_ptr<const NSCompoundPredicate>
    orPredicateWithSubpredicates(Subpredicates subpredicates);

    /// `notPredicateWithSubpredicate:`.
    [[nodiscard]] static std::shared_ptr<const NSCompoundPredicate>
    notPredicateWithSubpredicate(std::shared_ptr<const NSPredicate> predicate);

    /// `subpredicates`.
    [[nodiscard]] virtual const Subpredicates& subpredicates() const = 0;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;
};

/// `filteredArrayUsingPredicate:` of a list of objects: those that meet `predicate`, in their order. Raises as
/// `evaluateWithObject` does.
template <typename T>
[[nodiscard]] std::vector<std::shared_ptr<T>> filteredArrayUsingPredicate(const std::vector<std::shared_ptr<T>>& self,
                                                                          const NSPredicate& predicate) {
    std::vector<std::shared_ptr<T>> result;
    for (const std::shared_ptr<T>& object : self) {
        if (predicate.evaluateWithObject(*object)) {
            result.push_back(object);
        }
    }
    return result;
}

} // namespace qk
