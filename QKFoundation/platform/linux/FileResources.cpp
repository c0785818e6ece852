// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileResources.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/values/Value.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace qk::platform::fileresources {
namespace {

constexpr double kNanosecondsOfSecond = 1e9;

struct File {
    const LinuxRoot& root;
    std::string path; // of this machine, below the root
    struct statx status {};

    [[nodiscard]] bool isOfType(unsigned type) const { return (status.stx_mode & S_IFMT) == type; }
};

struct Free {
    void operator()(char* text) const noexcept { std::free(text); }
};
using Text = std::unique_ptr<char, Free>;

std::optional<Value> dateOf(const File& file, unsigned mask, const struct statx_timestamp& time) {
    if ((file.status.stx_mask & mask) == 0) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(time.tv_sec) +
                                                 time.tv_nsec / kNanosecondsOfSecond);
}

// The right of the effective user, whom the library may have switched to.
bool mayAccess(const File& file, int mode) {
    return ::faccessat(AT_FDCWD, file.path.c_str(), mode, AT_EACCESS) == 0;
}

bool isHidden(const File& file) {
    const std::string_view path = file.path;
    return path.substr(path.rfind('/') + 1).starts_with('.');
}

bool isRootOfMount(const File& file) {
    if (!file.isOfType(S_IFDIR)) {
        return false;
    }
    if ((file.status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0) {
        // The root folder of a process may be no mount: chroot(2).
        return (file.status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 || file.path == "/";
    }
    struct stat above {};
    return ::stat((file.path + "/..").c_str(), &above) == 0 &&
           (makedev(file.status.stx_dev_major, file.status.stx_dev_minor) != above.st_dev ||
            file.status.stx_ino == above.st_ino);
}

std::optional<Value> canonicalPath(const File& file) {
    const Text resolved(::realpath(file.path.c_str(), nullptr));
    if (resolved == nullptr) {
        return std::nullopt;
    }
    std::string_view path = resolved.get();
    if (!file.root.isHost()) {
        const Text folder(::realpath(file.root.path("/").c_str(), nullptr));
        if (folder != nullptr && path.starts_with(folder.get())) { // a link may lead out of captured files
            path.remove_prefix(std::string_view(folder.get()).size());
        }
    }
    return stringWithFileSystemRepresentation(path.empty() ? "/" : path);
}

using Attribute = std::optional<Value> (*)(const File& file);

const std::vector<std::pair<NSString, Attribute>>& attributes() {
    using Result = std::optional<Value>;
    static const auto& table = *new std::vector<std::pair<NSString, Attribute>>{
        {NSURLIsRegularFileKey, [](const File& file) -> Result { return file.isOfType(S_IFREG); }},
        {NSURLIsSymbolicLinkKey, [](const File& file) -> Result { return file.isOfType(S_IFLNK); }},
        {NSURLIsDirectoryKey, [](const File& file) -> Result { return file.isOfType(S_IFDIR); }},
        {NSURLIsPackageKey, [](const File& /*file*/) -> Result { return false; }},
        {NSURLIsVolumeKey, [](const File& file) -> Result { return isRootOfMount(file); }},
        {NSURLIsHiddenKey, [](const File& file) -> Result { return isHidden(file); }},
        {NSURLIsReadableKey, [](const File& file) -> Result { return mayAccess(file, R_OK); }},
        {NSURLIsWritableKey, [](const File& file) -> Result { return mayAccess(file, W_OK); }},
        {NSURLIsExecutableKey, [](const File& file) -> Result { return mayAccess(file, X_OK); }},
        {NSURLContentModificationDateKey,
         [](const File& file) { return dateOf(file, STATX_MTIME, file.status.stx_mtime); }},
        {NSURLContentAccessDateKey, [](const File& file) { return dateOf(file, STATX_ATIME, file.status.stx_atime); }},
        {NSURLCanonicalPathKey, canonicalPath},
    };
    return table;
}

} // namespace

std::optional<NSDictionary> read(const LinuxRoot& root, const std::string& path, const std::vector<NSString>& keys) {
    File file{root, root.path(path)};
    if (::statx(AT_FDCWD, file.path.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
                STATX_TYPE | STATX_INO | STATX_ATIME | STATX_MTIME, &file.status) != 0) {
        return std::nullopt;
    }
    std::vector<NSDictionary::Entry> values;
    values.reserve(keys.size());
    for (const NSString& key : keys) {
        const auto attribute = std::ranges::find(attributes(), key, &std::pair<NSString, Attribute>::first);
        auto value = attribute != attributes().end() ? attribute->second(file) : std::nullopt;
        if (value.has_value()) {
            values.emplace_back(key, *std::move(value));
        }
    }
    return NSDictionary(std::move(values));
}

} // namespace qk::platform::fileresources
