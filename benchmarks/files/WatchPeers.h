// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

namespace qk::benchmarks {

/// Something that watches a whole tree for as long as it lives.
class Watcher {
public:
    Watcher() = default;
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;
    virtual ~Watcher() = default;
};

/// With the kernel's inotify and no more around it than what it takes to know which folder an event is about.
[[nodiscard]] std::unique_ptr<Watcher> watchByHand(const std::string& top);

/// One GFileMonitor for each folder.
[[nodiscard]] std::unique_ptr<Watcher> watchWithGIO(const std::string& top);

/// One QFileSystemWatcher over all folders.
[[nodiscard]] std::unique_ptr<Watcher> watchWithQt(const std::string& top);

} // namespace qk::benchmarks
