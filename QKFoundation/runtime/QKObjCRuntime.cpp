// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKObjCRuntime.h"

#include <algorithm>
#include <vector>

namespace qk {
namespace {

bool contains(const NSArray& names, const NSString& name) {
    return std::ranges::any_of(names, [&](const Value& each) { return each == Value(name); });
}

} // namespace

NSArray QKObjCRuntime::selectorsOfOProtocol(const ProtocolDescription& protocol) {
    std::vector<Value> selectors;
    for (const ProtocolDescription::Method& method : protocol.methods()) {
        if (method.isRequired && method.isInstanceMethod) {
            selectors.emplace_back(method.selector);
        }
    }
    return NSArray(std::move(selectors));
}

NSArray QKObjCRuntime::propertiesOfOProtocol(const ProtocolDescription& protocol) {
    return NSArray(std::vector<Value>(protocol.properties().begin(), protocol.properties().end()));
}

bool QKObjCRuntime::protocolContainsSelector(const ProtocolDescription& protocol, const NSString& selector) {
    return contains(selectorsOfOProtocol(protocol), selector);
}

bool QKObjCRuntime::protocolContainsProperty(const ProtocolDescription& protocol, const NSString& selector) {
    return contains(propertiesOfOProtocol(protocol), selector);
}

} // namespace qk
