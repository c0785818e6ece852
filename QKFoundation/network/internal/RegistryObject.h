// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/IORegistry.h"

namespace qk::internal {

/// A handle of the registry, given back at the end of the scope. The registry outlives it.
class RegistryObject {
public:
    RegistryObject(const platform::IORegistry& registry, platform::io_object_t object)
        : registry_(registry), object_(object) {}
    RegistryObject(const RegistryObject&) = delete;
    RegistryObject& operator=(const RegistryObject&) = delete;
    ~RegistryObject() {
        if (object_ != platform::IO_OBJECT_NULL) {
            registry_.objectRelease(object_);
        }
    }

    [[nodiscard]] platform::io_object_t get() const noexcept { return object_; }
    [[nodiscard]] explicit operator bool() const noexcept { return object_ != platform::IO_OBJECT_NULL; }

private:
    const platform::IORegistry& registry_;
    platform::io_object_t object_;
};

} // namespace qk::internal
