// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"
#include "QKFoundation/platform/values/NSArray.h"

namespace qk {

/// `QKObjCRuntime`: what a protocol declares. Threads: any.
class QK_EXPORT QKObjCRuntime {
public:
    QKObjCRuntime() = delete;

    /// `selectorsOfOProtocol:`. The names of the required instance methods, in the order of their declarations; those
    /// that are optional and those of the class are left out.
    [[nodiscard]] static NSArray selectorsOfOProtocol(const ProtocolDescription& protocol);

    /// `propertiesOfOProtocol:`. The names of the properties, in the order of their declarations.
    [[nodiscard]] static NSArray propertiesOfOProtocol(const ProtocolDescription& protocol);

    /// `protocol:containsSelector:`. Whether `selectorsOfOProtocol` lists it.
    [[nodiscard]] static bool protocolContainsSelector(const ProtocolDescription& protocol, const NSString& selector);

    /// `protocol:containsProperty:`. Whether a property bears the very name `selector`; the name of its setter, or of a
    /// getter that is called differently, is not one.
    [[nodiscard]] static bool protocolContainsProperty(const ProtocolDescription& protocol, const NSString& selector);
};

} // namespace qk
