// SPDX-License-Identifier: Apache-2.0
// Listing folders: new ones, those whose events were lost, and those that have no watch.
#include "QKFoundation/platform/linux/InotifyWatcher.h"

#include <algorithm>
#include <cerrno>

namespace qk::platform {
namespace {

constexpr unsigned kPollsPerLookAtFiles = 5;

} // namespace

// One listing: what is known of the folder, and how it is looked at.
struct InotifyWatcher::Listing {
    InotifyFolder& folder;
    const std::string& path;
    const OpenFolder& open;
    Look look;
    InotifyNames::Known known;
    bool wasKept;
};

// False when there is no such folder. One that must not be read stays unwatched.
bool InotifyWatcher::watchFolder(InotifyFolder& folder, const std::string& path, bool mayTake) {
    const int watch = kernel_->addWatch(instance_.get(), path.c_str(), kWatchedEvents);
    if (watch < 0) {
        const int error = errno;
        if (error == ENOSPC || error == ENOMEM) {
            pollFrom(folder, path);
        }
        return error != ENOENT && error != ENOTDIR && error != ELOOP;
    }
    folder.isPolled = false;
    InotifyFolder* const owner = folders_.findWatch(watch);
    if (owner != nullptr && owner != &folder) {
        // One folder under two paths: it was renamed, and its events say so later, or it is mounted twice.
        if (!mayTake) {
            return true;
        }
        later(*owner, {.tells = true, .watchesAgain = true});
    }
    folders_.setWatch(folder, watch);
    return true;
}

bool InotifyWatcher::workOff(std::size_t entries) {
    std::size_t done = 0;
    while (!pending_.empty() && done < entries) {
        const Pending next = pending_.back();
        pending_.pop_back();
        if (next.folder->serial == next.serial) {
            done += 1 + list(*next.folder, next.look);
        }
    }
    return pending_.empty();
}

std::size_t InotifyWatcher::list(InotifyFolder& folder, Look look) {
    const auto path = InotifyFolders::path(folder);
    if (!path.has_value()) {
        InotifyFolders::top(folder).missedEvents = true;
        return 0;
    }
    const bool isThere = !look.watchesAgain || watchFolder(folder, *path, false);
    const OpenFolder open(*path);
    const int error = errno;
    if (!isThere || !open.isOpen()) {
        if (folder.isRoot && (!isThere || error == ENOENT)) {
            loseRoot(folder, kFSEventStreamEventFlagItemRemoved);
        } else if (isThere && (error == EMFILE || error == ENFILE || error == ENOMEM)) {
            pollFrom(folder, *path);
        } else {
            noteAstray(folder);
        }
        return 0; // of the others the folder above tells
    }
    if (folder.isPolled) {
        folder.changed = open.dates("").changed;
    }
    Listing listing{folder, *path, open, look, takeNames(folder), std::exchange(folder.namesAreKept, true)};
    if (look.tells && !listing.wasKept) {
        tell_(*path, kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagUserDropped |
                         kFSEventStreamEventFlagItemIsDir);
    }
    const std::size_t count = open.forEachEntry(listingBuffer_, [&](const FolderEntry& entry) {
        if (entry.isFolder) {
            listFolder(listing, entry.name);
        } else {
            listFile(listing, entry.name);
        }
    });
    tellGone(folder, *path, listing.known);
    return count;
}

void InotifyWatcher::listFolder(Listing& listing, std::string_view name) {
    InotifyFolder* child = folders_.find(listing.folder, name);
    if (child != nullptr) {
        child->isSeen = true;
        if (listing.look.watchesAgain) {
            later(*child, listing.look);
        }
        return;
    }
    std::string path = joinPath(listing.path, name);
    if (!excluded_.empty() && excluded_.contains(path)) {
        return;
    }
    child = &folders_.add(listing.folder, name);
    if (!watchFolder(*child, path, true)) {
        drop(*child);
        noteAstray(listing.folder);
        return;
    }
    child->isSeen = true;
    if (listing.look.tells) {
        listed_.insert(path);
        tell_(std::move(path), kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
    }
    if (listing.look.tells || tellSinceMove(listing, name, kFSEventStreamEventFlagItemIsDir)) {
        later(*child, {.tells = true});
    } else {
        later(*child, {.movedIn = listing.look.movedIn});
    }
}

void InotifyWatcher::listFile(Listing& listing, std::string_view name) {
    const bool isNew = listing.known.empty() || listing.known.erase(std::string(name)) == 0;
    keepName(listing.folder, name, true);
    if (isNew && listing.look.tells && listing.wasKept) {
        std::string path = joinPath(listing.path, name);
        listed_.insert(path);
        tell_(std::move(path), kFSEventStreamEventFlagItemCreated | kFileEventIsNoFolder | kFileEventClosed);
    } else if (listing.look.comparesDates) {
        tellDates(joinPath(listing.path, name), listing.open.dates(name));
    } else if (isNew) {
        static_cast<void>(tellSinceMove(listing, name, kFileEventIsNoFolder));
    }
}

// What was there before the tree was moved in is not told; what came in the moment between that and the watch is.
// True when it was made then. One that was moved here then has only another date of change.
bool InotifyWatcher::tellSinceMove(const Listing& listing, std::string_view name, FSEventStreamEventFlags kind) {
    const std::int64_t since = listing.look.movedIn;
    const ItemDates dates = since != 0 ? listing.open.dates(name) : ItemDates{};
    if (dates.changed <= since) {
        return false;
    }
    const bool isFolder = kind == kFSEventStreamEventFlagItemIsDir;
    std::string path = joinPath(listing.path, name);
    if (dates.created > since) {
        listed_.insert(path);
        tell_(std::move(path), kFSEventStreamEventFlagItemCreated | kind | (isFolder ? 0 : kFileEventClosed));
        return true;
    }
    if (dates.modified <= since) {
        tell_(std::move(path), kFSEventStreamEventFlagItemInodeMetaMod | kind);
    } else if (!isFolder) {
        tell_(std::move(path), kFSEventStreamEventFlagItemModified | kind);
    }
    return false;
}

// A move dates the folder and the one it is moved into, and neither date can be set back. 0 when it is gone.
std::int64_t InotifyWatcher::latestMoveTo(const std::string& path) {
    return std::min(datesOf(path).changed, datesOf(folderAbove(path)).changed);
}

// `known` is what was there and is not any more; of the folders it is those that have not been seen.
void InotifyWatcher::tellGone(InotifyFolder& folder, const std::string& path, const InotifyNames::Known& known) {
    for (const std::string& name : known) {
        tell_(joinPath(path, name), kFSEventStreamEventFlagItemRemoved | kFileEventIsNoFolder);
    }
    for (InotifyFolder* child = folder.firstChild; child != nullptr;) {
        InotifyFolder* const next = child->next;
        if (!std::exchange(child->isSeen, false)) {
            tellWholeGone(*child);
            drop(*child);
        }
        child = next;
    }
}

void InotifyWatcher::tellWholeGone(InotifyFolder& folder) {
    const std::vector<InotifyFolder*> all = InotifyFolders::subtree(folder);
    for (auto each = all.rbegin(); each != all.rend(); ++each) {
        const std::string path = InotifyFolders::path(**each).value_or("");
        for (const std::string& name : takeNames(**each)) {
            tell_(joinPath(path, name), kFSEventStreamEventFlagItemRemoved | kFileEventIsNoFolder);
        }
        tell_(path, kFSEventStreamEventFlagItemRemoved | kFSEventStreamEventFlagItemIsDir);
    }
}

void InotifyWatcher::tellDates(std::string path, const ItemDates& dates) {
    if (const auto flags = changesSince(dates, changedSince_); flags != kFSEventStreamEventFlagNone) {
        tell_(std::move(path), flags | kFileEventIsNoFolder);
    }
}

InotifyNames::Known InotifyWatcher::takeNames(InotifyFolder& folder) {
    keptNames_ -= folder.names.size();
    return folder.names.take();
}

void InotifyWatcher::keepName(InotifyFolder& folder, std::string_view name, bool isThere) {
    if (!folder.namesAreKept) {
        return;
    }
    keptNames_ -= folder.names.size();
    folder.names.note(name, isThere);
    keptNames_ += folder.names.size();
    if (keptNames_ > limits_.keptNames) {
        static_cast<void>(takeNames(folder));
        folder.namesAreKept = false;
    }
}

void InotifyWatcher::pollFrom(InotifyFolder& folder, const std::string& path) {
    const bool isTold = folder.isPolled || (folder.parent != nullptr && folder.parent->isPolled);
    if (!folder.isPolled) {
        polled_.push_back({&folder, folder.serial, {}});
        folder.isPolled = true;
    }
    if (!isTold) {
        tell_(path, kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagItemIsDir);
    }
    if (pollTimer_ == nullptr) {
        polledFilesAt_ = fileTimeNow();
        pollTimer_ = loop_->scheduleTimer(limits_.pollSeconds, true, [this] { poll(); });
    }
}

void InotifyWatcher::poll() {
    if (!pending_.empty()) {
        return; // the last time goes on
    }
    const bool looksAtFiles = ++polls_ % kPollsPerLookAtFiles == 0;
    changedSince_ = polledFilesAt_;
    if (looksAtFiles) {
        polledFilesAt_ = fileTimeNow();
    }
    bool mayHaveWatches = true;
    for (const Pending& each : std::exchange(polled_, {})) {
        if (each.folder->serial != each.serial || !each.folder->isPolled) {
            continue;
        }
        if (!mayHaveWatches || !watchAgain(*each.folder)) {
            mayHaveWatches = false;
            polled_.push_back(each);
            pollFolder(*each.folder, looksAtFiles);
        }
    }
    if (polled_.empty()) {
        pollTimer_.reset();
    }
    goOn();
}

// Whether there is a watch for it now.
bool InotifyWatcher::watchAgain(InotifyFolder& folder) {
    const auto path = InotifyFolders::path(folder);
    if (!path.has_value()) {
        return true; // it is on its way out
    }
    if (!watchFolder(folder, *path, false)) {
        later(folder, {.tells = true, .watchesAgain = true});
        return true;
    }
    if (!folder.isPolled) {
        later(folder, {.tells = true, .comparesDates = true});
    }
    return !folder.isPolled;
}

void InotifyWatcher::pollFolder(InotifyFolder& folder, bool looksAtFiles) {
    const auto path = InotifyFolders::path(folder);
    if (!path.has_value()) {
        return;
    }
    const std::int64_t changed = datesOf(*path).changed;
    if (changed == 0 && folder.isRoot) {
        later(folder, {.tells = true, .watchesAgain = true}); // it is gone, and the listing finds that out
    } else if (looksAtFiles || changed != folder.changed) {
        later(folder, {.tells = true, .comparesDates = looksAtFiles});
    }
}

} // namespace qk::platform
