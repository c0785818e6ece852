// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"

#include "QKFoundation/platform/linux/Nanoseconds.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace qk::platform {
namespace {

std::int64_t timeOf(const statx_timestamp& time) {
    return nanoseconds(time.tv_sec, time.tv_nsec);
}

ItemDates datesAt(int folder, const char* name, int flags) {
    struct statx status {};
    constexpr unsigned kDates = STATX_MTIME | STATX_CTIME | STATX_BTIME;
    if (::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | flags, kDates, &status) != 0) {
        return {};
    }
    const bool isBirthKnown = (status.stx_mask & STATX_BTIME) != 0;
    return {isBirthKnown ? timeOf(status.stx_btime) : 0, timeOf(status.stx_mtime), timeOf(status.stx_ctime)};
}

// That somebody watches a folder is no use of it: where its date of access may be left alone, it is.
int openFolder(const std::string& path) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const int folder = ::open(path.c_str(), kFlags | O_NOATIME);
    return folder < 0 && errno == EPERM ? ::open(path.c_str(), kFlags) : folder;
}

} // namespace

ItemDates datesOf(const std::string& path) {
    return datesAt(AT_FDCWD, path.c_str(), 0);
}

OpenFolder::OpenFolder(const std::string& path) : descriptor_(openFolder(path)) {}

OpenFolder::~OpenFolder() {
    if (isOpen()) {
        ::close(descriptor_);
    }
}

bool OpenFolder::isFolder(const char* name, unsigned char type) const {
    if (type != DT_UNKNOWN) {
        return type == DT_DIR;
    }
    struct stat status {};
    return ::fstatat(descriptor_, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

std::size_t OpenFolder::forEachEntry(std::span<std::byte> buffer,
                                     const std::function<void(const FolderEntry&)>& take) const {
    std::size_t count = 0;
    ssize_t filled = 0;
    while ((filled = ::getdents64(descriptor_, buffer.data(), buffer.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(filled);) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer.data() + at); // the kernel aligns them
            at += entry->d_reclen;
            const char* const name = entry->d_name;
            const std::string_view text(name);
            if (text != "." && text != "..") {
                ++count;
                take({text, isFolder(name, entry->d_type)});
            }
        }
    }
    return count;
}

ItemDates OpenFolder::dates(std::string_view name) const {
    return datesAt(descriptor_, std::string(name).c_str(), name.empty() ? AT_EMPTY_PATH : 0);
}

std::string joinPath(std::string_view path, std::string_view name) {
    std::string joined;
    joined.reserve(path.size() + 1 + name.size());
    joined.append(path);
    if (path != "/") {
        joined.push_back('/');
    }
    return joined.append(name);
}

std::string folderAbove(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

bool isAtOrBelow(std::string_view path, std::string_view root) {
    return path.starts_with(root) && (path.size() == root.size() || root == "/" || path[root.size()] == '/');
}

std::int64_t fileTimeNow() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return nanoseconds(now.tv_sec, now.tv_nsec);
}

} // namespace qk::platform
