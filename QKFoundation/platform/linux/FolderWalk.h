// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {

/// What an entry of a folder is. Pipes, sockets and devices are none of these.
enum class FileKind : unsigned char { file, folder, symbolicLink };

/// Seconds since 1970.
struct FileDates {
    double modified = 0;
    double accessed = 0;
};

/// What is at a path itself, without following a link.
struct FileFacts {
    FileKind kind;
    FileDates dates;
};

/// The facts of the file at `path`; nothing when there is none, or it is a pipe, a socket or a device. Any thread.
[[nodiscard]] std::optional<FileFacts> fileFacts(const std::string& path);

/// Is told what one thread of a `FolderWalk` finds.
class FolderVisitor {
public:
    FolderVisitor() = default;
    FolderVisitor(const FolderVisitor&) = delete;
    FolderVisitor& operator=(const FolderVisitor&) = delete;
    virtual ~FolderVisitor() = default;

    /// What follows is in the folder with that absolute path, which is valid until the next one.
    virtual void enter(std::string_view folder) = 0;

    /// Whether `visit` is to be called for that entry. The dates of others are not asked for.
    [[nodiscard]] virtual bool wants(std::string_view name, FileKind kind) = 0;

    /// An entry that `wants` has just been asked about.
    virtual void visit(std::string_view name, FileKind kind, const FileDates& dates) = 0;

    /// So many more entries that are not hidden have been looked at. Now and then.
    virtual void examined(std::size_t entries) = 0;
};

/// A walk through everything below some folders, breadth first, by one thread or several at once.
///
/// Left out are what begins with a dot, with all that is below it, and what cannot be read or goes away meanwhile.
/// Symbolic links are told and never followed, nor is one on the way to a folder. Other file systems that are mounted
/// below are entered, but those of the kernel (/proc, /sys and their like) are not, and nothing is mounted by it. A
/// folder whose path is longer than the system takes (4,095 bytes) is not entered, which also bounds the depth.
///
/// What is kept is the names of the folders that have been seen and not been listed yet; one descriptor is open for
/// each thread.
class FolderWalk {
public:
    /// A walk through what is below `roots`, absolute paths, the roots themselves left out. It ends early when
    /// `isCancelled`, which outlives it, turns true.
    FolderWalk(std::vector<std::string> roots, const std::atomic<bool>& isCancelled);

    /// `askForHelp` is called, once, as soon as there are enough folders for a second thread.
    void setHelp(std::function<void()> askForHelp) { askForHelp_ = std::move(askForHelp); }

    /// Tells `visitor` what this thread finds, and returns when all threads together have found everything.
    void work(FolderVisitor& visitor);

private:
    // Folders in one folder. The names end with U+0000; without names it is the folder itself.
    struct Batch {
        std::string folder;
        std::string names;
        std::size_t next = 0;
        bool isOtherFileSystem = false;
    };
    struct Folder {
        std::string path;
        bool isOtherFileSystem;
    };
    class Listing;

    [[nodiscard]] std::optional<Folder> nextFolder();
    [[nodiscard]] Folder takeFolder();
    void finished(std::vector<Batch> found);

    const std::atomic<bool>& isCancelled_;
    std::function<void()> askForHelp_;

    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::deque<Batch> batches_;
    std::size_t waiting_ = 0; // folders in `batches_`
    std::size_t active_ = 0;  // threads that are listing a folder
    bool hasAskedForHelp_ = false;
};

} // namespace qk::platform
