// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <concepts>
#include <cstddef>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

/// How typed properties, arguments and results become values that are looked up at run time, and back.
namespace qk::internal {

template <typename T>
struct IsOptional : std::false_type {};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <typename T>
struct IsSharedPointer : std::false_type {};
template <typename T>
struct IsSharedPointer<std::shared_ptr<T>> : std::true_type {};

template <typename T>
struct IsVector : std::false_type {};
template <typename T>
struct IsVector<std::vector<T>> : std::true_type {};

/// The value that stands for `typed`; nothing for an empty optional and a null pointer. A vector becomes an array, with
/// the null marker for elements that are nothing.
template <typename T>
[[nodiscard]] std::optional<Value> toValue(const T& typed) {
    if constexpr (IsOptional<T>::value) {
        return typed.has_value() ? toValue(*typed) : std::nullopt;
    } else if constexpr (IsSharedPointer<T>::value) {
        return typed != nullptr ? std::optional<Value>(typed) : std::nullopt;
    } else if constexpr (IsVector<T>::value) {
        std::vector<Value> values;
        values.reserve(typed.size());
        for (const auto& element : typed) {
            values.push_back(toValue(element).value_or(NSNull{}));
        }
        return NSArray(std::move(values));
    } else {
        return Value(typed);
    }
}

/// The `T` that `value` stands for, or nothing when it stands for none.
template <typename T>
[[nodiscard]] std::optional<T> fromValue(const std::optional<Value>& value) {
    if constexpr (IsOptional<T>::value) {
        if (!value.has_value()) {
            return std::optional<T>(std::in_place);
        }
        auto inner = fromValue<typename T::value_type>(value);
        return inner.has_value() ? std::optional<T>(std::move(inner)) : std::nullopt;
    } else if constexpr (IsSharedPointer<T>::value) {
        if (!value.has_value()) {
            return T();
        }
        T object = value->asObject<typename T::element_type>();
        return object != nullptr ? std::optional<T>(std::move(object)) : std::nullopt;
    } else if constexpr (std::same_as<T, Value>) {
        return value;
    } else if constexpr (std::is_arithmetic_v<T>) {
        const NSNumber* number = value.has_value() ? value->as<NSNumber>() : nullptr;
        if (number == nullptr) {
            return std::nullopt;
        }
        if constexpr (std::same_as<T, bool>) {
            return number->boolValue();
        } else if constexpr (std::floating_point<T>) {
            return static_cast<T>(number->doubleValue());
        } else if constexpr (std::is_unsigned_v<T>) {
            return static_cast<T>(number->unsignedIntegerValue());
        } else {
            return static_cast<T>(number->integerValue());
        }
    } else {
        const T* held = value.has_value() ? value->as<T>() : nullptr;
        return held != nullptr ? std::optional<T>(*held) : std::nullopt;
    }
}

} // namespace qk::internal
