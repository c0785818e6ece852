// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/files/WatchPeers.h"

#include <gio/gio.h>

#include <filesystem>
#include <vector>

namespace qk::benchmarks {
namespace {

class GIO final : public Watcher {
public:
    explicit GIO(const std::string& top) {
        add(top);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
            if (entry.is_directory()) {
                add(entry.path().string());
            }
        }
    }
    GIO(const GIO&) = delete;
    GIO& operator=(const GIO&) = delete;
    ~GIO() override {
        for (GFileMonitor* monitor : monitors_) {
            g_file_monitor_cancel(monitor);
            g_object_unref(monitor);
        }
    }

private:
    void add(const std::string& path) {
        GFile* const file = g_file_new_for_path(path.c_str());
        monitors_.push_back(g_file_monitor_directory(file, G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr));
        g_object_unref(file);
    }

    std::vector<GFileMonitor*> monitors_;
};

} // namespace

std::unique_ptr<Watcher> watchWithGIO(const std::string& top) {
    return std::make_unique<GIO>(top);
}

} // namespace qk::benchmarks
