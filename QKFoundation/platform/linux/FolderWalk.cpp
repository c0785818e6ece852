// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FolderWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} << 10U;
constexpr std::size_t kFoldersForTwo = 16;
constexpr unsigned kFacts = STATX_TYPE | STATX_MTIME | STATX_ATIME;
constexpr int kLook = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;

// File systems that show the kernel's own affairs, and those that mount something when they are entered.
constexpr std::array<std::uint32_t, 22> kPseudoFileSystems{PROC_SUPER_MAGIC,
                                                           SYSFS_MAGIC,
                                                           DEVPTS_SUPER_MAGIC,
                                                           CGROUP_SUPER_MAGIC,
                                                           CGROUP2_SUPER_MAGIC,
                                                           DEBUGFS_MAGIC,
                                                           TRACEFS_MAGIC,
                                                           SECURITYFS_MAGIC,
                                                           SELINUX_MAGIC,
                                                           SMACK_MAGIC,
                                                           BPF_FS_MAGIC,
                                                           PSTOREFS_MAGIC,
                                                           EFIVARFS_MAGIC,
                                                           HUGETLBFS_MAGIC,
                                                           BINFMTFS_MAGIC,
                                                           NSFS_MAGIC,
                                                           AUTOFS_SUPER_MAGIC,
                                                           RDTGROUP_SUPER_MAGIC,
                                                           0x62656570 /* configfs */,
                                                           0x19800202 /* message queues */,
                                                           0x65735543 /* fusectl */,
                                                           0x67596969 /* pipes of RPC */};

bool showsFiles(int folder) {
    struct statfs facts {};
    return ::fstatfs(folder, &facts) == 0 &&
           std::ranges::find(kPseudoFileSystems, static_cast<std::uint32_t>(facts.f_type)) == kPseudoFileSystems.end();
}

// A kernel before 5.6 and some sandboxes do not know the call that refuses links on the whole way.
int openWithoutLinks(const char* path, int flags) {
    static std::atomic<bool> isKnown = true;
    if (isKnown.load(std::memory_order_relaxed)) {
        open_how how{};
        how.flags = static_cast<std::uint64_t>(flags);
        how.resolve = RESOLVE_NO_SYMLINKS;
        const auto folder = static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path, &how, sizeof how));
        const bool isRefused = folder < 0 && (errno == ENOSYS || (errno == EPERM && (flags & O_NOATIME) == 0));
        if (!isRefused) {
            return folder;
        }
        isKnown.store(false, std::memory_order_relaxed);
    }
    return ::open(path, flags | O_NOFOLLOW);
}

// That somebody looked for files is no use of the folder: where its date may be left alone, it is.
UniqueFD openFolder(const std::string& path) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    UniqueFD folder(openWithoutLinks(path.c_str(), kFlags | O_NOATIME));
    if (!folder && errno == EPERM) {
        folder.reset(openWithoutLinks(path.c_str(), kFlags));
    }
    return folder;
}

double seconds(const statx_timestamp& time) {
    constexpr double kNano = 1e-9;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * kNano;
}

FileDates dates(const struct statx& facts) {
    return {.modified = seconds(facts.stx_mtime), .accessed = seconds(facts.stx_atime)};
}

std::optional<FileKind> kindOfMode(unsigned mode) {
    if (S_ISREG(mode)) {
        return FileKind::file;
    }
    if (S_ISDIR(mode)) {
        return FileKind::folder;
    }
    return S_ISLNK(mode) ? std::optional(FileKind::symbolicLink) : std::nullopt;
}

} // namespace

std::optional<FileFacts> fileFacts(const std::string& path) {
    struct statx facts {};
    if (::statx(AT_FDCWD, path.c_str(), kLook, kFacts, &facts) != 0) {
        return std::nullopt;
    }
    const std::optional<FileKind> kind = kindOfMode(facts.stx_mode);
    return kind.has_value() ? std::optional(FileFacts{.kind = *kind, .dates = dates(facts)}) : std::nullopt;
}

// Lists one folder after another for one thread.
class FolderWalk::Listing {
public:
    Listing(FolderVisitor& visitor, const std::atomic<bool>& isCancelled)
        : visitor_(visitor), isCancelled_(isCancelled), buffer_(new std::byte[kBufferSize]) {}

    // The folders in `folder`, after the visitor has been told of everything in it.
    std::vector<Batch> list(Folder folder) {
        const UniqueFD open = openFolder(folder.path);
        struct statx facts {};
        if (!open || ::statx(open.get(), "", AT_EMPTY_PATH, STATX_TYPE, &facts) != 0 ||
            (folder.isOtherFileSystem && !showsFiles(open.get()))) {
            return {};
        }
        device_ = deviceOf(facts);
        folder_ = open.get();
        visitor_.enter(folder.path);
        readEntries();
        std::vector<Batch> found;
        if (!names_.empty()) {
            found.push_back({.folder = folder.path, .names = std::exchange(names_, {})});
        }
        if (!mounted_.empty()) {
            found.push_back(
                {.folder = std::move(folder.path), .names = std::exchange(mounted_, {}), .isOtherFileSystem = true});
        }
        return found;
    }

private:
    static std::uint64_t deviceOf(const struct statx& facts) {
        constexpr unsigned kHalf = 32;
        return (std::uint64_t{facts.stx_dev_major} << kHalf) | facts.stx_dev_minor;
    }

    void readEntries() {
        while (!isCancelled_) {
            const ssize_t size = ::getdents64(folder_, buffer_.get(), kBufferSize);
            std::size_t seen = 0;
            for (ssize_t at = 0; at < size;) {
                const auto* entry = reinterpret_cast<const dirent64*>(buffer_.get() + at);
                at += entry->d_reclen;
                if (entry->d_name[0] != '.') {
                    ++seen;
                    look(*entry);
                }
            }
            visitor_.examined(seen);
            if (size <= 0) {
                return;
            }
        }
    }

    void look(const dirent64& entry) {
        const std::string_view name(entry.d_name);
        switch (entry.d_type) {
        case DT_REG: lookAtPlain(name, FileKind::file); return;
        case DT_LNK: lookAtPlain(name, FileKind::symbolicLink); return;
        case DT_DIR:
        case DT_UNKNOWN: lookClosely(name); return;
        default: return;
        }
    }

    void lookAtPlain(std::string_view name, FileKind kind) {
        struct statx facts {};
        // The kind is asked again: another thing may be there by now.
        if (visitor_.wants(name, kind) && ::statx(folder_, name.data(), kLook, kFacts, &facts) == 0 &&
            kindOfMode(facts.stx_mode) == kind) {
            visitor_.visit(name, kind, dates(facts));
        }
    }

    void lookClosely(std::string_view name) {
        struct statx facts {};
        if (::statx(folder_, name.data(), kLook, kFacts, &facts) != 0) {
            return;
        }
        const std::optional<FileKind> kind = kindOfMode(facts.stx_mode);
        if (kind.has_value() && visitor_.wants(name, *kind)) {
            visitor_.visit(name, *kind, dates(facts));
        }
        if (kind != FileKind::folder || (facts.stx_attributes & STATX_ATTR_AUTOMOUNT) != 0) {
            return;
        }
        (deviceOf(facts) == device_ ? names_ : mounted_).append(name).push_back('\0');
    }

    FolderVisitor& visitor_;
    const std::atomic<bool>& isCancelled_;
    const std::unique_ptr<std::byte[]> buffer_;
    int folder_ = -1;
    std::uint64_t device_ = 0;
    std::string names_;
    std::string mounted_;
};

FolderWalk::FolderWalk(std::vector<std::string> roots, const std::atomic<bool>& isCancelled)
    : isCancelled_(isCancelled) {
    for (std::string& root : roots) {
        batches_.push_back({.folder = std::move(root), .names = {}, .isOtherFileSystem = true});
    }
    waiting_ = batches_.size();
}

void FolderWalk::work(FolderVisitor& visitor) {
    Listing listing(visitor, isCancelled_);
    while (std::optional<Folder> folder = nextFolder()) {
        finished(listing.list(*std::move(folder)));
    }
}

std::optional<FolderWalk::Folder> FolderWalk::nextFolder() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !batches_.empty() || active_ == 0 || isCancelled_; });
    if (batches_.empty() || isCancelled_) {
        changed_.notify_all();
        return std::nullopt;
    }
    ++active_;
    return takeFolder();
}

FolderWalk::Folder FolderWalk::takeFolder() {
    --waiting_;
    Batch& batch = batches_.front();
    Folder folder{.path = batch.folder, .isOtherFileSystem = batch.isOtherFileSystem};
    if (!batch.names.empty()) {
        const std::string_view name(batch.names.data() + batch.next);
        folder.path.append(folder.path.ends_with('/') ? "" : "/").append(name);
        batch.next += name.size() + 1;
    }
    if (batch.next >= batch.names.size()) {
        batches_.pop_front();
    }
    return folder;
}

void FolderWalk::finished(std::vector<Batch> found) {
    bool needsHelp = false;
    {
        const std::scoped_lock lock(mutex_);
        --active_;
        for (Batch& batch : found) {
            waiting_ += static_cast<std::size_t>(std::ranges::count(batch.names, '\0'));
            batches_.push_back(std::move(batch));
        }
        if (!hasAskedForHelp_ && waiting_ >= kFoldersForTwo) {
            hasAskedForHelp_ = true;
            needsHelp = askForHelp_ != nullptr;
        }
        changed_.notify_all();
    }
    if (needsHelp) {
        askForHelp_();
    }
}

} // namespace qk::platform
