// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/InotifyFolders.h"
#include "QKFoundation/platform/linux/InotifyKernel.h"
#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"
#include "QKFoundation/platform/linux/LinuxFileEventWatcher.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"
#include "QKFoundation/platform/linux/parse/FileEvents.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace qk::platform {

/// Watches trees with one inotify watch for each folder.
///
/// A new folder is watched first, then listed, and what is in it already is told as created. When the kernel has lost
/// events, every folder is listed again, and what has changed against the kept names and by the files' dates is told.
/// A folder for which there is no watch left is told as one to be looked through, and is looked at every two seconds
/// from then on. A root that goes away, is not there yet or is a file is watched through the folder above it.
class InotifyWatcher final : public LinuxFileEventWatcher {
public:
    struct Limits {
        std::size_t readsAtOnce = 4;      ///< buffers of 64 KiB
        std::size_t entriesAtOnce = 8192; ///< of listings; a folder is always listed whole
        std::size_t keptNames = std::size_t{32} << 20U;
        double pollSeconds = 2;
    };

    InotifyWatcher(std::shared_ptr<LinuxRunLoop> loop, FileEventTeller tell, std::shared_ptr<InotifyKernel> kernel)
        : InotifyWatcher(std::move(loop), std::move(tell), std::move(kernel), Limits{}) {}
    InotifyWatcher(std::shared_ptr<LinuxRunLoop> loop, FileEventTeller tell, std::shared_ptr<InotifyKernel> kernel,
                   const Limits& limits);
    ~InotifyWatcher() override;

    /// Once. Watches all that is there now; false when the kernel has no instance left.
    [[nodiscard]] bool start(const std::vector<std::string>& roots);

    void windowEnds() override;
    [[nodiscard]] std::int64_t quietSince() const override { return quietSince_; }

    [[nodiscard]] std::size_t folderCount() const noexcept { return folders_.count(); }

private:
    using Event = parse::InotifyEvent;

    // A watched path, and the folder that it is; without one, the watch of the nearest folder above it that there is,
    // and the path in there that is waited for.
    struct Root {
        std::string path;
        InotifyFolder* folder = nullptr;
        int guard = -1;
        std::string awaited;
        bool isGuardedByParent = false;
    };
    // How a folder is to be listed.
    struct Look {
        bool tells = false;         // what is new in it, or gone
        bool comparesDates = false; // and what changed since `changedSince_`
        bool watchesAgain = false;  // it may have become another one under the same name
        std::int64_t movedIn = 0;   // when that happened to its tree, at the latest; what changed since is told
    };
    struct Pending {
        InotifyFolder* folder;
        std::uint64_t serial;
        Look look;
    };

    [[nodiscard]] static FSEventStreamEventFlags flagsOf(std::uint32_t mask);

    // InotifyWatcher.cpp: reading, and what each event means.
    void readEvents();
    void take(const Event& event);
    void takeSelf(InotifyFolder& folder, const Event& event);
    void takeEntry(InotifyFolder& folder, const std::string& path, const Event& event);
    void folderAppeared(InotifyFolder& parent, const std::string& path, const Event& event);
    void folderDisappeared(InotifyFolder& parent, const Event& event);
    void watchUnreadable(InotifyFolder& folder);
    [[nodiscard]] InotifyFolder* takeBack(const std::string& path);
    void dropMoved(InotifyFolder* folder);
    void noteAstray(InotifyFolder& folder);
    [[nodiscard]] bool isAstray(const InotifyFolder& folder) const;
    void recover();
    void drop(InotifyFolder& folder);

    // InotifyRoots.cpp
    void findRoot(Root& root, bool tellsRoot, Look look);
    bool enterRoot(Root& root, bool tellsRoot, Look look);
    void guardRoot(Root& root);
    void leaveGuard(Root& root);
    void loseRoot(InotifyFolder& folder, FSEventStreamEventFlags flags);
    void takeGuarded(const Event& event);
    void takeAwaited(Root& root, const Event& event);

    // InotifyListing.cpp
    bool watchFolder(InotifyFolder& folder, const std::string& path, bool mayTake);
    void later(InotifyFolder& folder, Look look) { pending_.push_back({&folder, folder.serial, look}); }
    bool workOff(std::size_t entries);
    void goOn();
    struct Listing;
    std::size_t list(InotifyFolder& folder, Look look);
    void listFolder(Listing& listing, std::string_view name);
    void listFile(Listing& listing, std::string_view name);
    void tellGone(InotifyFolder& folder, const std::string& path, const InotifyNames::Known& known);
    void tellWholeGone(InotifyFolder& folder);
    void tellDates(std::string path, const ItemDates& dates);
    bool tellSinceMove(const Listing& listing, std::string_view name, FSEventStreamEventFlags kind);
    [[nodiscard]] static std::int64_t latestMoveTo(const std::string& path);
    [[nodiscard]] InotifyNames::Known takeNames(InotifyFolder& folder);
    void keepName(InotifyFolder& folder, std::string_view name, bool isThere);
    void pollFrom(InotifyFolder& folder, const std::string& path);
    void poll();
    bool watchAgain(InotifyFolder& folder);
    void pollFolder(InotifyFolder& folder, bool looksAtFiles);

    const std::shared_ptr<LinuxRunLoop> loop_;
    const FileEventTeller tell_;
    const std::shared_ptr<InotifyKernel> kernel_;
    const Limits limits_;
    UniqueFD instance_;
    std::unique_ptr<RunLoopSource> source_;
    std::unique_ptr<RunLoopSource> pollTimer_;
    std::vector<std::byte> buffer_;
    std::vector<std::byte> listingBuffer_;

    std::vector<Root> roots_;
    std::unordered_set<std::string> excluded_; // mounts that are no files
    InotifyFolders folders_;
    std::vector<Pending> pending_;
    // Out of their trees, by the cookie of the move; null for one that had gone before it was watched.
    std::unordered_map<std::uint32_t, InotifyFolder*> moved_;
    bool isQueueEmpty_ = true;
    std::uint64_t timesEmpty_ = 1;           // how often the queue was seen empty
    std::unordered_set<std::string> listed_; // told because they were listed; their own events may still come
    std::int64_t quietSince_ = 0;
    std::int64_t changedSince_ = 0;
    std::size_t keptNames_ = 0;
    unsigned polls_ = 0;
    std::int64_t polledFilesAt_ = 0;
    std::vector<Pending> polled_;
    bool isGoingOn_ = false;
    std::shared_ptr<const bool> token_ = std::make_shared<const bool>(true); // lives as long as this does
};

} // namespace qk::platform
