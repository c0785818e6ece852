// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/InotifyWatcher.h"

#include "QKFoundation/platform/linux/LinuxFileEventMounts.h"

#include <climits>

#include <algorithm>
#include <cstdint>
#include <span>

namespace qk::platform {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} << 10U;
constexpr std::size_t kListingBufferSize = std::size_t{32} << 10U;
constexpr std::size_t kLargestEvent = sizeof(inotify_event) + NAME_MAX + 1;

} // namespace

InotifyWatcher::InotifyWatcher(std::shared_ptr<LinuxRunLoop> loop, FileEventTeller tell,
                               std::shared_ptr<InotifyKernel> kernel, const Limits& limits)
    : loop_(std::move(loop)),
      tell_(std::move(tell)),
      kernel_(std::move(kernel)),
      limits_(limits),
      buffer_(kBufferSize),
      listingBuffer_(kListingBufferSize) {}

// The watches go with the instance. They are not taken away one by one, which would also end those of a parent that
// this process was forked from.
InotifyWatcher::~InotifyWatcher() = default;

bool InotifyWatcher::start(const std::vector<std::string>& roots) {
    instance_.reset(kernel_->makeInstance());
    if (!instance_) {
        return false;
    }
    source_ = loop_->addFileDescriptor(instance_.get(), [this] { readEvents(); });
    if (source_ == nullptr) {
        return false;
    }
    quietSince_ = fileTimeNow();
    for (std::string& path : pseudoMountsBelow(roots)) {
        excluded_.insert(std::move(path));
    }
    roots_.resize(roots.size());
    for (std::size_t index = 0; index < roots.size(); ++index) {
        roots_[index].path = roots[index];
        findRoot(roots_[index], false, {});
    }
    return workOff(SIZE_MAX);
}

// What was moved, and has not turned up again, has left the trees. The kernel tells of the two ends one after the
// other, and the second one may be waiting to be read.
void InotifyWatcher::windowEnds() {
    if (moved_.empty()) {
        return;
    }
    std::vector<std::uint32_t> cookies;
    for (const auto& [cookie, folder] : moved_) { // not a view of the keys, which clang cannot have of this library
        cookies.push_back(cookie);
    }
    readEvents();
    if (!isQueueEmpty_) {
        return; // at the end of the next window
    }
    for (const std::uint32_t cookie : cookies) {
        if (const auto left = moved_.extract(cookie); !left.empty()) {
            dropMoved(left.mapped());
        }
    }
}

void InotifyWatcher::readEvents() {
    isQueueEmpty_ = false;
    std::int64_t before = 0;
    for (std::size_t reads = 0; reads < limits_.readsAtOnce && !isQueueEmpty_; ++reads) {
        before = fileTimeNow();
        const ssize_t count = kernel_->read(instance_.get(), buffer_);
        std::span<const std::byte> bytes(buffer_.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        isQueueEmpty_ = bytes.size() + kLargestEvent <= buffer_.size(); // another one would have had room
        while (const auto event = parse::takeInotifyEvent(bytes)) {
            take(*event);
        }
    }
    if (isQueueEmpty_) {
        listed_.clear();
        quietSince_ = before;
        ++timesEmpty_;
    }
    goOn();
}

void InotifyWatcher::goOn() {
    if (workOff(limits_.entriesAtOnce) || std::exchange(isGoingOn_, true)) {
        return;
    }
    loop_->perform([this, token = std::weak_ptr(token_)] {
        if (token.lock() != nullptr) {
            isGoingOn_ = false;
            goOn();
        }
    });
}

FSEventStreamEventFlags InotifyWatcher::flagsOf(std::uint32_t mask) {
    FSEventStreamEventFlags flags = (mask & IN_ISDIR) != 0 ? kFSEventStreamEventFlagItemIsDir : kFileEventIsNoFolder;
    const auto add = [&](std::uint32_t event, FSEventStreamEventFlags flag) {
        if ((mask & event) != 0) {
            flags |= flag;
        }
    };
    add(IN_CREATE, kFSEventStreamEventFlagItemCreated);
    add(IN_DELETE, kFSEventStreamEventFlagItemRemoved);
    add(IN_MOVED_FROM | IN_MOVED_TO, kFSEventStreamEventFlagItemRenamed);
    add(IN_MODIFY, kFSEventStreamEventFlagItemModified);
    add(IN_ATTRIB, kFSEventStreamEventFlagItemInodeMetaMod);
    add(IN_CLOSE_WRITE, kFileEventClosed);
    return flags;
}

void InotifyWatcher::take(const Event& event) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        recover();
        return;
    }
    InotifyFolder* const folder = folders_.findWatch(event.watch);
    if (folder == nullptr) {
        takeGuarded(event);
        return;
    }
    if ((event.mask & IN_IGNORED) != 0) {
        folders_.setWatch(*folder, -1);
        return;
    }
    const auto path = InotifyFolders::path(*folder);
    if (!path.has_value()) {
        InotifyFolders::top(*folder).missedEvents = true;
    } else if (event.name.empty()) {
        takeSelf(*folder, event);
    } else {
        takeEntry(*folder, *path, event);
    }
}

// Of a folder that is not a root, its parent's watch tells the rest.
void InotifyWatcher::takeSelf(InotifyFolder& folder, const Event& event) {
    if ((event.mask & IN_UNMOUNT) != 0) {
        later(folder, {.tells = true, .watchesAgain = true});
    } else if (folder.isRoot && (event.mask & IN_ATTRIB) != 0) {
        tell_(folder.name, kFSEventStreamEventFlagItemInodeMetaMod | kFSEventStreamEventFlagItemIsDir);
    } else if (folder.isRoot && (event.mask & (IN_DELETE_SELF | IN_MOVE_SELF)) != 0) {
        const bool isMoved = (event.mask & IN_MOVE_SELF) != 0;
        loseRoot(folder, isMoved ? kFSEventStreamEventFlagItemRenamed : kFSEventStreamEventFlagItemRemoved);
    }
}

void InotifyWatcher::takeEntry(InotifyFolder& folder, const std::string& path, const Event& event) {
    std::string item = joinPath(path, event.name);
    if (!listed_.empty() && (event.mask & (IN_CREATE | IN_DELETE | IN_MOVED_FROM)) != 0 && listed_.erase(item) != 0 &&
        (event.mask & IN_CREATE) != 0) {
        return; // it was told when its folder was listed
    }
    const bool appears = (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0;
    const bool disappears = (event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0;
    if ((event.mask & IN_ISDIR) != 0) {
        if (appears) {
            folderAppeared(folder, item, event);
        } else if (disappears) {
            folderDisappeared(folder, event);
        } else if (InotifyFolder* const child = folders_.find(folder, event.name); child != nullptr) {
            watchUnreadable(*child);
        }
    } else if (appears || disappears) {
        keepName(folder, event.name, appears);
    }
    tell_(std::move(item), flagsOf(event.mask));
}

void InotifyWatcher::folderAppeared(InotifyFolder& parent, const std::string& path, const Event& event) {
    InotifyFolder* const existing = folders_.find(parent, event.name);
    const auto moved = (event.mask & IN_MOVED_TO) != 0 ? moved_.extract(event.cookie) : decltype(moved_)::node_type();
    InotifyFolder* known = !moved.empty() ? moved.mapped() : nullptr;
    if (known == nullptr && (event.mask & IN_MOVED_TO) != 0 && !moved_.empty()) {
        known = takeBack(path);
    }
    if (known != nullptr) {
        if (existing != nullptr) {
            drop(*existing);
        }
        InotifyFolder& folder = *known;
        folders_.attach(folder, parent, event.name);
        if (std::exchange(folder.missedEvents, false) || isAstray(folder)) {
            later(folder, {.tells = true, .watchesAgain = true});
        }
    } else if (existing != nullptr) {
        later(*existing, {.tells = true, .watchesAgain = true});
    } else if (!excluded_.contains(path)) {
        InotifyFolder& folder = folders_.add(parent, event.name);
        const std::int64_t movedIn = latestMoveTo(path); // the sooner, the closer it is
        if (watchFolder(folder, path, true)) {
            // Of a tree that was moved here from outside only the top is told, and what was made in it since; but this
            // may be one that left unseen.
            const bool mayBeBack = std::ranges::any_of(moved_, [](const auto& each) { return each.second == nullptr; });
            const bool tells = (event.mask & IN_CREATE) != 0 || !moved.empty() || mayBeBack;
            later(folder, {.tells = tells, .movedIn = tells ? 0 : movedIn});
        } else {
            drop(folder);
            noteAstray(parent);
        }
    }
}

void InotifyWatcher::folderDisappeared(InotifyFolder& parent, const Event& event) {
    InotifyFolder* const folder = folders_.find(parent, event.name);
    if ((event.mask & IN_MOVED_FROM) == 0) {
        if (folder != nullptr) {
            drop(*folder);
        }
        return;
    }
    if (folder != nullptr) {
        folders_.detach(*folder);
        folder->missedEvents = isAstray(*folder);
    }
    dropMoved(std::exchange(moved_[event.cookie], folder));
}

// The folder that is at `path` now, when it is one of those that are out of their trees: it left them and came back by
// another move. Its watches have gone on, and so must those below it, whose events may be the next ones.
InotifyFolder* InotifyWatcher::takeBack(const std::string& path) {
    const int watch = kernel_->addWatch(instance_.get(), path.c_str(), kWatchedEvents);
    InotifyFolder* const folder = watch >= 0 ? folders_.findWatch(watch) : nullptr;
    if (folder == nullptr) {
        return nullptr; // it is watched as any new one, which finds this watch again
    }
    InotifyFolder& top = InotifyFolders::top(*folder);
    if (top.isRoot) {
        return nullptr;
    }
    std::erase_if(moved_, [folder](const auto& each) { return each.second == folder; });
    folder->missedEvents = true; // of what happened meanwhile nobody knows
    folders_.detach(*folder);
    return folder;
}

void InotifyWatcher::dropMoved(InotifyFolder* folder) {
    if (folder != nullptr) {
        drop(*folder);
    }
}

// The path of `folder`, or of one in it, led nowhere: that one is gone, or a folder above it has been moved. The events
// of that are still to come, and then what is in the moved one is not what was seen here.
void InotifyWatcher::noteAstray(InotifyFolder& folder) {
    for (InotifyFolder* each = &folder; each != nullptr; each = each->parent) {
        each->astray = timesEmpty_;
    }
}

bool InotifyWatcher::isAstray(const InotifyFolder& folder) const {
    constexpr std::uint64_t kLately = 2; // an event comes a moment after what it tells of
    return folder.astray != 0 && timesEmpty_ - folder.astray <= kLately;
}

// It may have become one that may be read.
void InotifyWatcher::watchUnreadable(InotifyFolder& folder) {
    if (folder.watch < 0 && !folder.isPolled) {
        later(folder, {.watchesAgain = true});
    }
}

void InotifyWatcher::drop(InotifyFolder& folder) {
    for (const InotifyFolder* each : InotifyFolders::subtree(folder)) {
        keptNames_ -= each->names.size();
    }
    folders_.remove(folder, [this](int watch) { kernel_->removeWatch(instance_.get(), watch); });
}

// The kernel had no room for some events. What was told before the queue was last seen empty is all there is to be
// sure of.
void InotifyWatcher::recover() {
    for (const auto& [cookie, folder] : std::exchange(moved_, {})) {
        dropMoved(folder);
    }
    changedSince_ = pending_.empty() ? quietSince_ : std::min(changedSince_, quietSince_);
    for (Root& root : roots_) {
        const bool isFolder = root.folder != nullptr;
        tell_(root.path, kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagKernelDropped |
                             (isFolder ? kFSEventStreamEventFlagItemIsDir : kFileEventIsNoFolder));
        if (isFolder) {
            later(*root.folder, {.tells = true, .comparesDates = true, .watchesAgain = true});
            continue;
        }
        findRoot(root, false, {.tells = true});
        if (root.folder == nullptr) {
            tellDates(root.path, datesOf(root.path));
        }
    }
}

std::unique_ptr<LinuxFileEventWatcher> watchWithInotify(const std::shared_ptr<LinuxRunLoop>& loop,
                                                        const std::vector<std::string>& roots, FileEventTeller tell) {
    auto watcher = std::make_unique<InotifyWatcher>(loop, std::move(tell), std::make_shared<InotifyKernel>());
    return watcher->start(roots) ? std::move(watcher) : nullptr;
}

} // namespace qk::platform
