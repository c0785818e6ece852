// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/files/WatchPeers.h"

#include <dirent.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <string_view>
#include <unordered_map>

namespace qk::benchmarks {
namespace {

constexpr std::uint32_t kMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_CLOSE_WRITE |
                                IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_DONT_FOLLOW |
                                IN_EXCL_UNLINK;

class ByHand final : public Watcher {
public:
    explicit ByHand(const std::string& top) : instance_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) { add(top); }
    ByHand(const ByHand&) = delete;
    ByHand& operator=(const ByHand&) = delete;
    ~ByHand() override { ::close(instance_); }

private:
    void add(const std::string& path) {
        paths_[::inotify_add_watch(instance_, path.c_str(), kMask)] = path;
        DIR* const folder = ::opendir(path.c_str());
        while (const dirent* entry = ::readdir(folder)) {
            const char* const text = entry->d_name;
            const std::string_view name(text);
            if (entry->d_type == DT_DIR && name != "." && name != "..") {
                add(path + '/' + text);
            }
        }
        ::closedir(folder);
    }

    int instance_;
    std::unordered_map<int, std::string> paths_;
};

} // namespace

std::unique_ptr<Watcher> watchByHand(const std::string& top) {
    return std::make_unique<ByHand>(top);
}

} // namespace qk::benchmarks
