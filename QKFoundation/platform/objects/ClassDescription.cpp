// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

ClassDescription::ClassDescription(NSString name, const ClassDescription* superclass)
    : name_(std::move(name)), superclass_(superclass) {}

bool ClassDescription::isSubclassOf(const ClassDescription& other) const noexcept {
    const ClassDescription* description = this;
    while (description != nullptr && description != &other) {
        description = description->superclass_;
    }
    return description != nullptr;
}

const ClassDescription::Property* ClassDescription::property(const NSString& key) const {
    for (const ClassDescription* description = this; description != nullptr; description = description->superclass_) {
        if (const auto found = description->properties_.find(key); found != description->properties_.end()) {
            return &found->second;
        }
    }
    return nullptr;
}

const ClassDescription::Method* ClassDescription::method(const NSString& selector) const {
    for (const ClassDescription* description = this; description != nullptr; description = description->superclass_) {
        if (const auto found = description->methods_.find(selector); found != description->methods_.end()) {
            return &found->second;
        }
    }
    return nullptr;
}

bool ClassDescription::conformsToProtocol(const NSString& protocol) const {
    for (const ClassDescription* description = this; description != nullptr; description = description->superclass_) {
        if (description->protocols_.contains(protocol)) {
            return true;
        }
    }
    return false;
}

} // namespace qk
