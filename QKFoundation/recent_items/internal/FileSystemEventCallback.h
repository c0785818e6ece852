// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FSEvents.h"

namespace qk::internal {

/// What the stream of a `FileSystemObserver` calls: hands paths and flags to the observer that `info` is.
void fileSystemEventCallback(platform::FSEventStreamRef stream, void* info, std::size_t numEvents,
                             const NSArray& eventPaths, std::span<const platform::FSEventStreamEventFlags> eventFlags,
                             std::span<const platform::FSEventStreamEventId> eventIds);

} // namespace qk::internal
