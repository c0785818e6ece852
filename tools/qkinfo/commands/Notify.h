// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace qk::info {

/// What is called out to the user's processes, or waited for.
struct NotifyOptions {
    std::string name; ///< in UTF-8
    bool waits = false;
    std::optional<std::chrono::milliseconds> timeout; ///< of the waiting; nothing: for ever
};

/// Posts the notification. Raises `std::runtime_error` when it may not have reached other processes.
void postNotification(const NotifyOptions& options);

/// Waits for the notification to be posted; false when the time is over first. `isRegistered` is called once none is
/// missed any more. Raises `std::runtime_error` when those of other processes cannot be heard, or not any longer.
[[nodiscard]] bool waitForNotification(const NotifyOptions& options, const std::function<void()>& isRegistered);

} // namespace qk::info
