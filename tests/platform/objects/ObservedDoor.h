// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include "tests/platform/values/Printing.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace qk {

/// An object whose "name" can be nil and whose "width" cannot; "key" is written without saying so.
class Door : public NSObject {
public:
    static const ClassDescription& describedClass() {
        static const ClassDescription& description = ClassBuilder<Door>("Door", NSObject::describedClass())
                                                         .property("name", &Door::name, &Door::setName)
                                                         .property("width", &Door::width, &Door::setWidth)
                                                         .property("key", &Door::key, &Door::setKey)
                                                         .build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    const std::optional<NSString>& name() const { return name_; }
    void setName(const std::optional<NSString>& name) {
        changeValueForKey("name", [&] { name_ = name; });
    }
    int width() const { return width_; }
    void setWidth(int width) {
        changeValueForKey("width", [&] { width_ = width; });
    }
    int key() const { return key_; }
    void setKey(int key) { key_ = key; }
    void setNameDirectly(const std::optional<NSString>& name) { name_ = name; }
    template <typename Store>
    void change(Store store) {
        changeValueForKey("width", store);
    }

private:
    std::optional<NSString> name_;
    int width_ = 0;
    int key_ = 0;
};

/// Keeps what it is told, and does what a test wants while it is told.
class Watcher : public NSObject {
public:
    struct Told {
        NSString keyPath;
        NSObject* object;
        NSDictionary change;
        void* context;
    };

    void observeValueForKeyPath(const NSString& keyPath, NSObject& ofObject, const NSDictionary& change,
                                void* context) override {
        told.push_back({keyPath, &ofObject, change, context});
        if (const auto action = onChange) { // a copy: the action may replace itself
            action();
        }
    }

    std::vector<Told> told;
    std::function<void()> onChange;
};

} // namespace qk
