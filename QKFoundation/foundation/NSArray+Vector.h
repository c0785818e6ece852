// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// `NSArray(Vector)`: arrays from and to the standard library's vectors of wide strings, numbers and booleans.
///
/// Readers take the elements of their kind in order and pass over all others, the null marker among them; they never
/// fail. Threads: all of them may be called anywhere; none keeps state.
namespace qk::NSArray_Vector {

/// `arrayWithStringVector:`. A string for each wide string, as `NSString_Unicode::initWithWString` makes it: a
/// malformed one is the element "".
[[nodiscard]] QK_EXPORT NSArray arrayWithStringVector(const std::vector<std::wstring>& vector);

/// `stringVectorFrom:`. As `stringVector`; empty for nothing.
[[nodiscard]] QK_EXPORT std::vector<std::wstring> stringVectorFrom(const std::optional<NSArray>& array);

/// `stringVector`. Every string, as `NSString_Unicode::wstringFrom` converts it: without composition, and empty for one
/// that holds a lone surrogate.
[[nodiscard]] QK_EXPORT std::vector<std::wstring> stringVector(const NSArray& self);

/// `arrayWithIntegerVector:`.
[[nodiscard]] QK_EXPORT NSArray arrayWithIntegerVector(const std::vector<std::int32_t>& vector);

/// `integerVector`. The `intValue` of every number: wider ones are cut to their low 32 bits, booleans are 1 and 0.
[[nodiscard]] QK_EXPORT std::vector<std::int32_t> integerVector(const NSArray& self);

/// `arrayWithUnsignedIntegerVector:`.
[[nodiscard]] QK_EXPORT NSArray arrayWithUnsignedIntegerVector(const std::vector<std::uint32_t>& vector);

/// `unsignedIntegerVectorWithArray:`. The `unsignedIntValue` of every number; empty for nothing.
/// Deliberate: it asks for the array as an argument that may be nothing, unlike its signed and boolean sisters.
[[nodiscard]] QK_EXPORT std::vector<std::uint32_t> unsignedIntegerVectorWithArray(const std::optional<NSArray>& array);

/// `arrayWithBoolVector:`.
[[nodiscard]] QK_EXPORT NSArray arrayWithBoolVector(const std::vector<bool>& vector);

/// `boolVector`. Whether every number is other than 0.
[[nodiscard]] QK_EXPORT std::vector<bool> boolVector(const NSArray& self);

/// `stringVectorFromFileURLs:`. The path of every URL in canonical composition (NFC), empty for one without a path.
/// Raises `NSInvalidArgumentException` for an element that is no URL.
/// Deliberate: paths are composed, unlike the strings of `stringVector`, since some file systems deliver them
/// decomposed.
[[nodiscard]] QK_EXPORT std::vector<std::wstring> stringVectorFromFileURLs(const NSArray& urls);

} // namespace qk::NSArray_Vector
