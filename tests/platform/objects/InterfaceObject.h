// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>
#include <optional>
#include <vector>

namespace qk {

/// An object to be compared by its values: a boxed boolean, a boolean, texts, a number, a date, and what leads further.
class InterfaceObject : public NSObject {
public:
    std::optional<NSNumber> enabled;
    bool linkActive = false;
    bool builtin = false;
    std::optional<NSString> name;
    double speed = 0;
    std::optional<NSDate> since;
    std::optional<NSDictionary> settings;
    std::vector<NSString> addresses;
    std::shared_ptr<InterfaceObject> parent;
    std::vector<std::shared_ptr<InterfaceObject>> members;
    Value any; // under a key that is a key word as well

    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<InterfaceObject>("InterfaceObject", NSObject::describedClass())
                .property("enabled", &InterfaceObject::enabled)
                .property("linkActive", &InterfaceObject::linkActive)
                .property("builtin", &InterfaceObject::builtin)
                .property("name", &InterfaceObject::name)
                .property("speed", &InterfaceObject::speed)
                .property("since", &InterfaceObject::since)
                .property("settings", &InterfaceObject::settings)
                .property("addresses", &InterfaceObject::addresses)
                .property("parent", &InterfaceObject::parent)
                .property("members", &InterfaceObject::members)
                .property("any", &InterfaceObject::any)
                .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }
};

} // namespace qk
