// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/NSDate.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSNull.h"
#include "QKFoundation/platform/values/NSNumber.h"
#include "QKFoundation/platform/values/NSObjectProtocol.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <concepts>
#include <cstddef>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace qk {

/// Anything that a collection can hold: one of the value types, the null marker, or an object with identity.
///
/// There is no empty state: absence of a value is the absence of a `Value`. Equality is by kind and content; numbers
/// compare by value whatever their kind, objects by their own `isEqual:`.
/// Threads: as the value that it holds.
class QK_EXPORT Value {
public:
    /// An object with identity, never null.
    using Object = std::shared_ptr<NSObjectProtocol>;

private:
    using Held = std::variant<NSNull, NSString, NSNumber, NSData, NSDate, NSURL, NSArray, NSDictionary, Object>;

public:
    /// The null marker.
    Value() noexcept = default;
    Value(NSNull /*null*/) noexcept {}                                        // NOLINT(google-explicit-constructor)
    Value(NSString string) noexcept : held_(std::move(string)) {}             // NOLINT(google-explicit-constructor)
    Value(NSNumber number) noexcept : held_(number) {}                        // NOLINT(google-explicit-constructor)
    Value(NSData data) noexcept : held_(std::move(data)) {}                   // NOLINT(google-explicit-constructor)
    Value(NSDate date) noexcept : held_(date) {}                              // NOLINT(google-explicit-constructor)
    Value(NSURL url) noexcept : held_(std::move(url)) {}                      // NOLINT(google-explicit-constructor)
    Value(NSArray array) noexcept : held_(std::move(array)) {}                // NOLINT(google-explicit-constructor)
    Value(NSDictionary dictionary) noexcept : held_(std::move(dictionary)) {} // NOLINT(google-explicit-constructor)

    /// A literal of the program's text, which is UTF-8.
    template <std::size_t N>
    Value(const char (&literal)[N]) : held_(NSString(literal)) {} // NOLINT(google-explicit-constructor)

    /// A number of the argument's own kind.
    template <typename T>
    // NOLINTNEXTLINE(google-explicit-constructor)
    requires std::is_arithmetic_v<T> Value(T number)
    noexcept : held_(NSNumber(number)) {}

    /// An object with identity; a null pointer is held as the null marker.
    template <std::derived_from<NSObjectProtocol> T>
    Value(std::shared_ptr<T> object) noexcept // NOLINT(google-explicit-constructor)
        : held_(object != nullptr ? Held(Object(std::move(object))) : Held()) {}

    /// What is held when it is a `T` (a value type or `NSNull`), else null.
    template <typename T>
    [[nodiscard]] const T* as() const noexcept {
        return std::get_if<T>(&held_);
    }

    /// As `as`, taken out of a value that nobody needs any more.
    template <typename T>
    [[nodiscard]] std::optional<T> take() && {
        T* held = std::get_if<T>(&held_);
        return held != nullptr ? std::optional<T>(std::move(*held)) : std::nullopt;
    }

    /// The object that is held when it is a `T`, else null.
    template <std::derived_from<NSObjectProtocol> T>
    [[nodiscard]] std::shared_ptr<T> asObject() const {
        const auto* object = std::get_if<Object>(&held_);
        return object != nullptr ? std::dynamic_pointer_cast<T>(*object) : nullptr;
    }

    [[nodiscard]] bool isNull() const noexcept { return std::holds_alternative<NSNull>(held_); }

    /// Calls `visitor` with the one thing that is held.
    template <typename Visitor>
    decltype(auto) visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), held_);
    }

    [[nodiscard]] std::size_t hash() const;

    /// `description`. The text form as "%@" shows it: a string bare, a date in UTC, data as "<0a0b0c0d 0e>", the null
    /// marker as "<null>", collections over several lines with their elements quoted where needed.
    [[nodiscard]] NSString description() const;

    QK_EXPORT friend bool operator==(const Value& left, const Value& right);

private:
    Held held_;
};

inline std::span<const Value> NSArray::values() const noexcept {
    return {begin(), count()};
}

inline const Value* NSArray::end() const noexcept {
    return begin() + count();
}

inline const Value& NSArray::operator[](std::size_t index) const noexcept {
    return begin()[index];
}

inline std::span<const NSDictionary::Entry> NSDictionary::entries() const noexcept {
    return {begin(), count()};
}

inline const NSDictionary::Entry* NSDictionary::end() const noexcept {
    return begin() + count();
}

template <typename T>
const T* NSDictionary::get(const NSString& key) const {
    const Value* value = objectForKey(key);
    return value != nullptr ? value->as<T>() : nullptr;
}

} // namespace qk

template <>
struct std::hash<qk::Value> {
    [[nodiscard]] std::size_t operator()(const qk::Value& value) const { return value.hash(); }
};
