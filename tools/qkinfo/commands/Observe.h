// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/recent_items/FileSystemObserver.h"

#include "tools/qkinfo/Facts.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qk::info {

/// What is watched. Texts in the encoding that they came in.
struct ObserveOptions {
    std::vector<std::string> paths = {};
    std::vector<std::string> names = {}; ///< parts of the names that count; empty for all
    std::int64_t itemType = FileSystemObserverItemTypeAny;
    std::int64_t changes = 0; ///< what one event tells of at least; 0 for any change
    std::optional<std::chrono::milliseconds> timeout = std::nullopt; ///< as the library counts it; nothing for none
};

/// Names of changed files, and for each of them the folder that it is in.
struct Changes {
    std::vector<std::string> names; ///< in UTF-8, as all here
    std::vector<std::string> folders;
};

enum class ObserveEnd {
    Interrupted, ///< by SIGINT
    TimedOut,
    Ended, ///< by `changed`
};

/// Watches on the main run loop, main thread, and calls `changed` for each batch of changes until that says false.
/// `isWatching` is called once nothing is missed any more. From then on SIGINT ends this, and not the process.
/// Raises `std::runtime_error` when one of the paths does not exist, or they cannot be watched.
[[nodiscard]] ObserveEnd observe(const ObserveOptions& options, const std::function<void()>& isWatching,
                                 const std::function<bool(const Changes& changes)>& changed);

/// A line for each changed file: the local time, the name and the folder.
[[nodiscard]] std::string changeLines(const Changes& changes, Moment time);

/// One line for all: a JSON object with the time and the changes.
[[nodiscard]] std::string changesJsonLine(const Changes& changes, Moment time);

} // namespace qk::info
