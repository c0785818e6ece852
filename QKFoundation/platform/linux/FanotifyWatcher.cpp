// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FanotifyWatcher.h"

#include "QKFoundation/platform/linux/LinuxFileEventMounts.h"

#include <climits>

#include <fcntl.h>
#include <linux/fanotify.h>
#include <sys/fanotify.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <span>

namespace qk::platform {
namespace {

constexpr std::size_t kBufferSize = std::size_t{256} << 10U;
constexpr std::size_t kListingBufferSize = std::size_t{32} << 10U;
constexpr int kReadsAtOnce = 4;
constexpr std::size_t kEntriesAtOnce = 8192;
constexpr std::uint64_t kMask =
    FAN_CREATE | FAN_DELETE | FAN_MOVED_FROM | FAN_MOVED_TO | FAN_MODIFY | FAN_CLOSE_WRITE | FAN_ATTRIB | FAN_ONDIR;
constexpr unsigned kGroup =
    FAN_CLASS_NOTIF | FAN_CLOEXEC | FAN_NONBLOCK | FAN_UNLIMITED_QUEUE | FAN_REPORT_DFID_NAME_TARGET;

// A handle of the kernel, with room for its bytes.
struct Handle {
    Handle() { head().handle_bytes = MAX_HANDLE_SZ; }
    file_handle& head() { return *reinterpret_cast<file_handle*>(bytes.data()); }
    std::byte* bytesOfIt() { return bytes.data() + sizeof(file_handle); } // not by its member, which has no size

    alignas(file_handle) std::array<std::byte, sizeof(file_handle) + MAX_HANDLE_SZ> bytes{};
};

std::optional<std::uint64_t> fileSystemOf(const std::string& path) {
    struct statfs status {};
    if (::statfs(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    static_assert(sizeof status.f_fsid == sizeof(std::uint64_t));
    std::uint64_t number = 0;
    std::memcpy(&number, &status.f_fsid, sizeof number);
    return number;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The folder itself, or the nearest one above.
std::string nearestFolder(std::string path) {
    while (path != "/" && !isFolder(path)) {
        path = folderAbove(path);
    }
    return path;
}

std::string pathOfDescriptor(int descriptor) {
    std::array<char, PATH_MAX> path; // NOLINT: the kernel fills what is looked at
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return length > 0 && path.front() == '/' ? std::string(path.data(), static_cast<std::size_t>(length)) : "";
}

FSEventStreamEventFlags flagsOf(std::uint64_t mask) {
    FSEventStreamEventFlags flags = (mask & FAN_ONDIR) != 0 ? kFSEventStreamEventFlagItemIsDir : kFileEventIsNoFolder;
    const auto add = [&](std::uint64_t event, FSEventStreamEventFlags flag) {
        if ((mask & event) != 0) {
            flags |= flag;
        }
    };
    add(FAN_CREATE, kFSEventStreamEventFlagItemCreated);
    add(FAN_DELETE, kFSEventStreamEventFlagItemRemoved);
    add(FAN_MOVED_FROM | FAN_MOVED_TO, kFSEventStreamEventFlagItemRenamed);
    add(FAN_MODIFY, kFSEventStreamEventFlagItemModified);
    add(FAN_ATTRIB, kFSEventStreamEventFlagItemInodeMetaMod);
    add(FAN_CLOSE_WRITE, kFileEventClosed);
    return flags;
}

} // namespace

FanotifyWatcher::FanotifyWatcher(std::shared_ptr<LinuxRunLoop> loop, std::vector<std::string> roots,
                                 FileEventTeller tell)
    : loop_(std::move(loop)),
      roots_(std::move(roots)),
      tell_(std::move(tell)),
      trees_(roots_, [this](const parse::FileIdentity& folder) { return find(folder); }) {}

FanotifyWatcher::~FanotifyWatcher() = default;

bool FanotifyWatcher::start() {
    group_.reset(::fanotify_init(kGroup, O_RDONLY | O_CLOEXEC));
    if (!group_) {
        return false;
    }
    const std::vector<std::string> mounts = fileMountsBelow(roots_);
    for (const std::string& root : roots_) {
        if (!watchFileSystem(nearestFolder(root))) {
            return false;
        }
    }
    if (!std::ranges::all_of(mounts, [this](const std::string& path) { return watchFileSystem(path); })) {
        return false;
    }
    quietSince_ = fileTimeNow();
    source_ = loop_->addFileDescriptor(group_.get(), [this] { readEvents(); });
    return source_ != nullptr;
}

bool FanotifyWatcher::watchFileSystem(const std::string& path) {
    constexpr unsigned kAdd = FAN_MARK_ADD | FAN_MARK_FILESYSTEM;
    const auto number = fileSystemOf(path);
    if (!number.has_value()) {
        return false;
    }
    if (!fileSystems_.contains(*number)) {
        if (::fanotify_mark(group_.get(), kAdd, kMask, AT_FDCWD, path.c_str()) != 0) {
            return false;
        }
        fileSystems_[*number].folder = path;
    }
    const bool isFound = findsAgain(path);
    fileSystems_[*number].opened.reset();
    return isFound;
}

// Whether a handle leads to `path`: not without the rights, and not to a second mount of the same files.
bool FanotifyWatcher::findsAgain(const std::string& path) {
    Handle handle;
    int mount = 0;
    if (::name_to_handle_at(AT_FDCWD, path.c_str(), &handle.head(), &mount, 0) != 0) {
        return false;
    }
    const auto* const bytes = reinterpret_cast<const char*>(handle.bytesOfIt());
    return find({true, fileSystemOf(path).value_or(0), handle.head().handle_type,
                 std::string_view(bytes, handle.head().handle_bytes)}) == path;
}

std::optional<std::string> FanotifyWatcher::find(const parse::FileIdentity& folder) {
    const auto fileSystem = fileSystems_.find(folder.fileSystem);
    Handle handle;
    if (fileSystem == fileSystems_.end() || folder.handle.size() > MAX_HANDLE_SZ) {
        return "";
    }
    UniqueFD& opened = fileSystem->second.opened;
    if (!opened) {
        // The folder itself may be gone by now; what it was in will do.
        const std::string nearest = nearestFolder(fileSystem->second.folder);
        opened.reset(::open(nearest.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK));
        if (!opened) {
            return notFound(errno);
        }
    }
    handle.head().handle_bytes = static_cast<unsigned>(folder.handle.size());
    handle.head().handle_type = folder.type;
    std::memcpy(handle.bytesOfIt(), folder.handle.data(), folder.handle.size());
    const UniqueFD found(::open_by_handle_at(opened.get(), &handle.head(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!found) {
        return notFound(errno);
    }
    struct stat status {};
    if (::fstat(found.get(), &status) == 0 && status.st_nlink == 0) {
        return std::nullopt; // removed, but somebody is still in it
    }
    return pathOfDescriptor(found.get());
}

std::optional<std::string> FanotifyWatcher::notFound(int error) {
    const bool isShort = error == EMFILE || error == ENFILE || error == ENOMEM;
    lacksMeans_ = lacksMeans_ || isShort;
    return isShort || error == ESTALE || error == ENOENT ? std::nullopt : std::optional<std::string>("");
}

void FanotifyWatcher::readEvents() {
    buffer_.resize(kBufferSize);
    bool isEmpty = false;
    std::int64_t before = 0;
    for (int reads = 0; reads < kReadsAtOnce && !isEmpty; ++reads) {
        before = fileTimeNow();
        const ssize_t count = ::read(group_.get(), buffer_.data(), buffer_.size());
        isEmpty = count <= 0;
        std::span<const std::byte> bytes(buffer_.data(), isEmpty ? 0 : static_cast<std::size_t>(count));
        std::vector<parse::FanotifyEvent> events;
        while (const auto event = parse::takeFanotifyEvent(bytes)) {
            events.push_back(*event);
        }
        take(events);
    }
    if (isEmpty) {
        quietSince_ = before;
    }
    for (auto& [number, fileSystem] : fileSystems_) {
        fileSystem.opened.reset();
    }
    goOn();
}

void FanotifyWatcher::take(const std::vector<parse::FanotifyEvent>& events) {
    const bool isWhole =
        trees_.take(events, [this](std::string path, std::uint64_t mask) { tell_(std::move(path), flagsOf(mask)); });
    const bool isOverflow =
        std::ranges::any_of(events, [](const auto& event) { return (event.mask & FAN_Q_OVERFLOW) != 0; });
    if (std::exchange(lacksMeans_, false) || isOverflow || !isWhole) {
        recover();
    }
}

void FanotifyWatcher::recover() {
    changedSince_ = pending_.empty() ? quietSince_ : std::min(changedSince_, quietSince_);
    pending_ = roots_;
    for (const std::string& root : roots_) {
        const bool isDir = isFolder(root);
        tell_(root, kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagKernelDropped |
                        (isDir ? kFSEventStreamEventFlagItemIsDir : kFileEventIsNoFolder));
        if (const auto flags = changesSince(datesOf(root), changedSince_); !isDir && flags != 0) {
            tell_(root, flags | kFileEventIsNoFolder);
        }
    }
}

void FanotifyWatcher::goOn() {
    for (std::size_t done = 0; !pending_.empty() && done < kEntriesAtOnce;) {
        const std::string path = std::move(pending_.back());
        pending_.pop_back();
        done += 1 + lookThrough(path);
    }
    if (pending_.empty() || std::exchange(isGoingOn_, true)) {
        return;
    }
    loop_->perform([this, token = std::weak_ptr(token_)] {
        if (token.lock() != nullptr) {
            isGoingOn_ = false;
            goOn();
        }
    });
}

std::size_t FanotifyWatcher::lookThrough(const std::string& path) {
    const OpenFolder open(path);
    if (!open.isOpen()) {
        return 0;
    }
    std::vector<std::byte> buffer(kListingBufferSize);
    return open.forEachEntry(buffer, [&](const FolderEntry& entry) {
        std::string item = joinPath(path, entry.name);
        const FSEventStreamEventFlags changes = changesSince(open.dates(entry.name), changedSince_);
        if (entry.isFolder) {
            pending_.push_back(item);
            if ((changes & kFSEventStreamEventFlagItemCreated) != 0) {
                tell_(std::move(item), kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
            }
        } else if (changes != kFSEventStreamEventFlagNone) {
            tell_(std::move(item), changes | kFileEventIsNoFolder);
        }
    });
}

std::unique_ptr<LinuxFileEventWatcher> watchWithFanotify(const std::shared_ptr<LinuxRunLoop>& loop,
                                                         const std::vector<std::string>& roots, FileEventTeller tell) {
    auto watcher = std::make_unique<FanotifyWatcher>(loop, roots, std::move(tell));
    return watcher->start() ? std::move(watcher) : nullptr;
}

} // namespace qk::platform
