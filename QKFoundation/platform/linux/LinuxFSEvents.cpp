// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFSEvents.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"
#include "QKFoundation/platform/linux/LinuxFileEventWatcher.h"
#include "QKFoundation/platform/linux/Nanoseconds.h"
#include "QKFoundation/platform/services/internal/EventStream.h"
#include "QKFoundation/platform/services/internal/JoinedEvents.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

constexpr FSEventStreamEventFlags kPrivateFlags = kFileEventIsNoFolder | kFileEventClosed;
constexpr FSEventStreamEventFlags kKindFlags =
    kFSEventStreamEventFlagItemIsFile | kFSEventStreamEventFlagItemIsDir | kFSEventStreamEventFlagItemIsSymlink;

// Absolute, and without links as far as it exists.
std::optional<std::string> canonicalPath(const Value& value) {
    const auto* const string = value.as<NSString>();
    const auto bytes = string != nullptr ? fileSystemRepresentation(*string) : std::nullopt;
    if (!bytes.has_value() || bytes->empty()) {
        return std::nullopt;
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(*bytes, error);
    std::filesystem::path path = error ? std::filesystem::path() : std::filesystem::weakly_canonical(absolute, error);
    if (error || path.empty()) {
        path = absolute.lexically_normal(); // a circle of links, or a folder that must not be read
    }
    std::string result = path.string();
    while (result.size() > 1 && result.ends_with('/')) {
        result.pop_back();
    }
    return result.starts_with('/') ? std::optional(std::move(result)) : std::nullopt;
}

// Those that are not below another one, which watches them as well.
std::vector<std::string> topmost(std::vector<std::string> paths) {
    std::ranges::sort(paths);
    std::vector<std::string> roots;
    for (std::string& path : paths) {
        if (std::ranges::none_of(roots, [&](const std::string& root) { return isAtOrBelow(path, root); })) {
            roots.push_back(std::move(path));
        }
    }
    return roots;
}

// What the item is and whether closing it has changed it, asked once for all that happened to it in a window. Flags
// without any change when nothing has happened after all.
FSEventStreamEventFlags settled(const std::string& path, FSEventStreamEventFlags flags, std::int64_t since) {
    FSEventStreamEventFlags told = flags & ~kPrivateFlags;
    if ((flags & kFileEventIsNoFolder) == 0) {
        return told;
    }
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return told | kFSEventStreamEventFlagItemIsFile;
    }
    if (S_ISREG(status.st_mode)) {
        told |= kFSEventStreamEventFlagItemIsFile;
    } else if (S_ISLNK(status.st_mode)) {
        told |= kFSEventStreamEventFlagItemIsSymlink;
    }
    const bool isNewAndEmpty = (flags & kFSEventStreamEventFlagItemCreated) != 0 && status.st_size == 0;
    const std::int64_t modified = nanoseconds(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    if ((flags & kFileEventClosed) != 0 && S_ISREG(status.st_mode) && !isNewAndEmpty &&
        modified >= since - kFileDateSlack) {
        told |= kFSEventStreamEventFlagItemModified;
    }
    return told;
}

class LinuxEventStream final : public internal::EventStream {
public:
    LinuxEventStream(FSEventStreamCallback callback, const FSEventStreamContext& context,
                     std::vector<std::string> roots, double latency, LinuxFSEvents::Means means)
        : EventStream(callback, context, latency), roots_(std::move(roots)), means_(means) {}

protected:
    [[nodiscard]] bool beginWatching(const std::shared_ptr<RunLoop>& runLoop) override {
        using Means = LinuxFSEvents::Means;
        const auto loop = std::dynamic_pointer_cast<LinuxRunLoop>(runLoop);
        if (loop == nullptr) {
            return false;
        }
        const FileEventTeller tell = [this](std::string path, FSEventStreamEventFlags flags) {
            if (events_.isEmpty()) {
                since_ = watcher_ != nullptr ? watcher_->quietSince() : 0;
            }
            events_.add(std::move(path), flags);
            beginWindow();
        };
        if (means_ != Means::Inotify) {
            watcher_ = watchWithFanotify(loop, roots_, tell);
        }
        if (watcher_ == nullptr && means_ != Means::Fanotify) {
            watcher_ = watchWithInotify(loop, roots_, tell);
        }
        return watcher_ != nullptr;
    }
    void endWatching() override {
        watcher_.reset();
        static_cast<void>(events_.take());
    }
    [[nodiscard]] internal::EventBatch takeEvents() override {
        watcher_->windowEnds();
        internal::EventBatch batch;
        std::vector<NSString> paths;
        paths.reserve(events_.count());
        batch.flags.reserve(events_.count());
        for (const auto& [path, flags] : events_.take()) {
            const FSEventStreamEventFlags told = settled(path, flags, since_);
            if ((told & ~kKindFlags) != 0) {
                paths.push_back(stringWithFileSystemRepresentation(path));
                batch.flags.push_back(told);
            }
        }
        batch.paths = NSArray(paths);
        return batch;
    }

private:
    const std::vector<std::string> roots_;
    const LinuxFSEvents::Means means_;
    std::unique_ptr<LinuxFileEventWatcher> watcher_;
    internal::JoinedEvents<std::string> events_;
    std::int64_t since_ = 0; // what is in the window happened behind this
};

} // namespace

FSEventStreamRef LinuxFSEvents::streamCreate(FSEventStreamCallback callback, const FSEventStreamContext& context,
                                             const NSArray& pathsToWatch, FSEventStreamEventId /*sinceWhen*/,
                                             double latency, FSEventStreamCreateFlags /*flags*/) {
    std::vector<std::string> paths;
    for (const Value& value : pathsToWatch) {
        if (auto path = canonicalPath(value); path.has_value()) {
            paths.push_back(*std::move(path));
        }
    }
    if (callback == nullptr || paths.empty()) {
        return nullptr;
    }
    return internal::EventStream::handOut(
        std::make_shared<LinuxEventStream>(callback, context, topmost(std::move(paths)), latency, means_));
}

} // namespace qk::platform
