// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace qk::platform {

/// An interface of an object of a service on the system bus.
struct BusInterface {
    const char* service;
    const char* path;
    const char* interface;
};

/// A text property of a service that runs already. Nothing when there is no bus, the service does not run (it is not
/// started for this), the property is no text, `limit` has passed, or this build has no libsystemd. Any thread.
[[nodiscard]] std::optional<std::string> readBusProperty(const BusInterface& object, const char* property,
                                                         std::chrono::milliseconds limit);

} // namespace qk::platform
