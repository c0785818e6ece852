// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <memory>
#include <utility>
#include <vector>

namespace qk {

/// What a protocol declares: the selectors of its methods and the names of its properties, in the order of the
/// declarations. Threads: may be read anywhere.
class QK_EXPORT ProtocolDescription {
public:
    struct Method {
        NSString selector;
        bool isRequired = true;
        bool isInstanceMethod = true;
    };

    explicit ProtocolDescription(NSString name) : name_(std::move(name)) {}

    [[nodiscard]] const NSString& name() const noexcept { return name_; }
    [[nodiscard]] const std::vector<Method>& methods() const noexcept { return methods_; }
    [[nodiscard]] const std::vector<NSString>& properties() const noexcept { return properties_; }

private:
    friend class ProtocolBuilder;

    NSString name_;
    std::vector<Method> methods_;
    std::vector<NSString> properties_;
};

/// Builds the description of a protocol:
///
///     const ProtocolDescription& lockingProtocol() {
///         static const ProtocolDescription& description =
///             ProtocolBuilder("QKLocking").method("tryLock").method("unlock").build();
///         return description;
///     }
class QK_EXPORT ProtocolBuilder {
public:
    explicit ProtocolBuilder(NSString name) : description_(std::make_unique<ProtocolDescription>(std::move(name))) {}

    ProtocolBuilder& method(const NSString& selector) { return add({selector, true, true}); }
    ProtocolBuilder& optionalMethod(const NSString& selector) { return add({selector, false, true}); }
    ProtocolBuilder& classMethod(const NSString& selector) { return add({selector, true, false}); }
    ProtocolBuilder& optionalClassMethod(const NSString& selector) { return add({selector, false, false}); }

    /// A property; `getter` and, unless it is read-only, `setter` are required methods too.
    ProtocolBuilder& property(const NSString& name, const NSString& getter, const NSString& setter) {
        method(setter);
        return property(name, getter);
    }
    ProtocolBuilder& property(const NSString& name, const NSString& getter) {
        description_->properties_.push_back(name);
        return method(getter);
    }

    /// The finished description, which is never destroyed.
    [[nodiscard]] const ProtocolDescription& build() { return *description_.release(); }

private:
    ProtocolBuilder& add(ProtocolDescription::Method method) {
        description_->methods_.push_back(std::move(method));
        return *this;
    }

    std::unique_ptr<ProtocolDescription> description_;
};

} // namespace qk
