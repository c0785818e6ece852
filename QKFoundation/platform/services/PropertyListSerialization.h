// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/Value.h"

#include <cstdint>
#include <optional>

namespace qk::platform {

/// `NSPropertyListFormat`: how a property list is written.
enum class NSPropertyListFormat : std::uint64_t { OpenStep = 1, XML_v1_0 = 100, Binary_v1_0 = 200 };

/// `NSPropertyListMutabilityOptions`: what may be changed in the values that are read. Values of this library are never
/// changed in place, so they read the same whatever is asked for; a mutable copy of any of them can be made.
enum class NSPropertyListMutabilityOptions : std::uint64_t {
    Immutable = 0,
    MutableContainers = 1,
    MutableContainersAndLeaves = 2,
};

/// `NSPropertyListSerialization`: values from and to the bytes of property lists. Threads: any, at the same time.
class QK_EXPORT PropertyListSerialization {
public:
    PropertyListSerialization() = default;
    PropertyListSerialization(const PropertyListSerialization&) = delete;
    PropertyListSerialization& operator=(const PropertyListSerialization&) = delete;
    virtual ~PropertyListSerialization();

    /// `propertyListWithData:options:format:error:`. The value that `data` hold, of any format (binary, XML, and the
    /// older text form, tried in this order); nothing when they are malformed or hold none.
    [[nodiscard]] virtual std::optional<Value> propertyListWithData(const NSData& data,
                                                                    NSPropertyListMutabilityOptions options) const = 0;

    /// `dataWithPropertyList:format:options:error:`. The bytes of `value` in XML or binary form; nothing when it holds
    /// what no property list can (the null marker, objects, URLs, a lone surrogate), and for the older text form, which
    /// is only read.
    [[nodiscard]] virtual std::optional<NSData> dataWithPropertyList(const Value& value,
                                                                     NSPropertyListFormat format) const = 0;
};

} // namespace qk::platform
