// SPDX-License-Identifier: Apache-2.0
// The roots of the trees: how they are found, and how their going and coming is noticed.
#include "QKFoundation/platform/linux/InotifyWatcher.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

constexpr std::uint32_t kGuardMask =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_MASK_ADD;
constexpr std::uint32_t kFileMask = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;
constexpr std::uint32_t kAppears = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kDisappears = IN_DELETE | IN_MOVED_FROM;

enum class Item { None, Folder, Other };

Item itemAt(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return Item::None;
    }
    return S_ISDIR(status.st_mode) ? Item::Folder : Item::Other;
}

std::string_view lastName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

// Guards it first and looks then, so that it cannot come unseen in between; and again when something above it came.
void InotifyWatcher::findRoot(Root& root, bool tellsRoot, Look look) {
    constexpr int kAttempts = 8; // each time somebody makes the next folder on the way
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        guardRoot(root);
        if (enterRoot(root, tellsRoot, look)) {
            return;
        }
        if (root.isGuardedByParent || root.guard < 0) {
            if (tellsRoot && itemAt(root.path) == Item::Other) {
                tell_(root.path,
                      kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemModified | kFileEventIsNoFolder);
            }
            return;
        }
        if (itemAt(root.awaited) != Item::Folder) {
            return; // its coming will be told, or the end of the folder that it is to come into
        }
    }
}

bool InotifyWatcher::enterRoot(Root& root, bool tellsRoot, Look look) {
    if (itemAt(root.path) != Item::Folder) {
        return false;
    }
    InotifyFolder& folder = folders_.addRoot(root.path);
    if (!watchFolder(folder, root.path, true)) {
        drop(folder);
        return false;
    }
    root.folder = &folder;
    later(folder, look);
    if (tellsRoot) {
        tell_(root.path, kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
    }
    return true;
}

// Watches the folder above the root, or the nearest one above that there is.
void InotifyWatcher::guardRoot(Root& root) {
    if (root.path == "/") {
        return;
    }
    const int previous = root.guard;
    root.guard = -1;
    std::string below = root.path;
    const std::uint32_t mask = kGuardMask | (itemAt(root.path) == Item::Folder ? 0 : kFileMask);
    do {
        const std::string above = folderAbove(below);
        root.awaited = below;
        root.isGuardedByParent = below == root.path;
        root.guard = kernel_->addWatch(instance_.get(), above.c_str(), mask);
        below = above;
    } while (root.guard < 0 && below != "/" && (errno == ENOENT || errno == ENOTDIR));
    if (previous >= 0 && previous != root.guard) {
        const int guard = std::exchange(root.guard, previous);
        leaveGuard(root);
        root.guard = guard;
    }
}

void InotifyWatcher::leaveGuard(Root& root) {
    const int guard = std::exchange(root.guard, -1);
    if (guard >= 0 && std::ranges::none_of(roots_, [&](const Root& each) { return each.guard == guard; })) {
        kernel_->removeWatch(instance_.get(), guard);
    }
}

// What `flags` say has happened to the root itself; it may be there again, or another one.
void InotifyWatcher::loseRoot(InotifyFolder& folder, FSEventStreamEventFlags flags) {
    const auto root = std::ranges::find(roots_, &folder, &Root::folder);
    if (root == roots_.end()) {
        return;
    }
    drop(folder);
    root->folder = nullptr;
    tell_(root->path, flags | kFSEventStreamEventFlagItemIsDir);
    findRoot(*root, true, {.tells = true});
}

void InotifyWatcher::takeGuarded(const Event& event) {
    for (Root& root : roots_) {
        if (root.guard != event.watch) {
            continue;
        }
        if ((event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT)) != 0) {
            leaveGuard(root);
            if (root.folder == nullptr) {
                findRoot(root, true, {.tells = true});
            } else {
                guardRoot(root);
            }
        } else if (event.name == lastName(root.awaited)) {
            takeAwaited(root, event);
        }
    }
}

void InotifyWatcher::takeAwaited(Root& root, const Event& event) {
    const bool appears = (event.mask & kAppears) != 0;
    if (!root.isGuardedByParent) {
        if (appears && root.folder == nullptr) {
            findRoot(root, true, {.tells = true}); // a folder on the way to it
        }
        return;
    }
    tell_(root.path, flagsOf(event.mask));
    if ((event.mask & (kAppears | kDisappears)) != 0 && root.folder != nullptr) {
        drop(*root.folder); // moved away, removed, or another one now
        root.folder = nullptr;
    }
    if (appears && (event.mask & IN_ISDIR) != 0) {
        const bool isMade = (event.mask & IN_CREATE) != 0;
        enterRoot(root, false, {.tells = isMade, .movedIn = isMade ? 0 : latestMoveTo(root.path)});
    }
    guardRoot(root); // a file is watched more closely than a folder
}

} // namespace qk::platform
