// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Volumes.h"

#include "QKFoundation/platform/linux/BlockDevice.h"
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/FileURLs.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <set>
#include <string_view>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kMountInfoLimit = std::size_t{64} << 20U;

bool isOnBlockDevice(const parse::Mount& mount) {
    if (mount.type == "squashfs" || mount.type == "autofs") { // packages; and what mounts as soon as it is looked at
        return false;
    }
    return mount.source.starts_with("/dev/") || mount.type == "zfs" || mount.type == "bcachefs";
}

// Whether the whole file system is mounted, not one of its folders at a second place. A subvolume has a root of its
// own, which the options name.
bool isWhole(const parse::Mount& mount) {
    return mount.root == "/" || parse::hasOption(mount.superOptions, "subvol=" + mount.root);
}

// Whether the path at `index` leads to that mount. It does not when another one was mounted on the same folder later.
// Neither may it be followed when a part of it is a mount of another machine, which may never answer. A root on another
// machine answers, or else nothing runs.
bool isReached(const std::vector<parse::Mount>& mounts, std::size_t index) {
    const std::string& path = mounts[index].path;
    const auto isAbove = [&path](const parse::Mount& other) {
        return isRemoteType(other.type) && path.size() > other.path.size() && path.starts_with(other.path) &&
               path[other.path.size()] == '/';
    };
    const auto isOver = [&path](const parse::Mount& other) { return other.path == path; };
    return std::none_of(mounts.begin() + static_cast<std::ptrdiff_t>(index) + 1, mounts.end(), isOver) &&
           std::ranges::none_of(mounts, isAbove);
}

NSString lastPathComponent(const std::string& path) {
    return stringWithFileSystemRepresentation(path).lastPathComponent();
}

// The label that the file system itself tells; nothing when it does not know the request or has none.
std::optional<std::string> fileSystemLabel(const std::string& path) {
    const UniqueFD folder(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY | O_NONBLOCK));
    std::array<char, FSLABEL_MAX> label{};
    if (!folder || ::ioctl(folder.get(), FS_IOC_GETFSLABEL, label.data()) != 0 || label[0] == '\0') {
        return std::nullopt;
    }
    const std::string_view text(label.data(), label.size());
    return std::string(text.substr(0, text.find('\0')));
}

NSString volumeName(const LinuxRoot& root, const parse::Mount& mount, const std::string& device) {
    if (root.isHost()) { // captured mounts are none that could be asked
        if (const auto label = fileSystemLabel(mount.path)) {
            return NSString::fromUTF8Lossy(*label);
        }
    }
    const std::string record = readBytes(root.path("/run/udev/data/b") + device).value_or(std::string());
    const std::string_view label = parse::deviceProperty(record, "E:ID_FS_LABEL=");
    return label.empty() ? lastPathComponent(mount.path) : NSString::fromUTF8Lossy(label);
}

Volume makeVolume(const LinuxRoot& root, const parse::Mount& mount) {
    if (isRemoteType(mount.type)) {
        return {mount, folderURL(mount.path), lastPathComponent(mount.path), true, false, false, false};
    }
    const std::string number = blockDeviceNumber(root, mount.device, mount.source);
    const BlockDevice device = readBlockDevice(root, number);
    return {mount,
            folderURL(mount.path),
            volumeName(root, mount, number),
            false,
            device.isInternal,
            device.isEjectable,
            device.isRemovable};
}

// The value of one key; nothing for a key that volumes have not, or that this one has no value for.
using Attribute = std::optional<Value> (*)(const Volume& volume, const struct statvfs& capacity);

const std::vector<std::pair<NSString, Attribute>>& attributes() {
    using Capacity = struct statvfs;
    static const auto& table = *new std::vector<std::pair<NSString, Attribute>>{
        {NSURLVolumeNameKey, [](const Volume& v, const Capacity&) -> std::optional<Value> { return v.name; }},
        {NSURLVolumeIsInternalKey,
         [](const Volume& v, const Capacity&) -> std::optional<Value> { return v.isInternal; }},
        {NSURLVolumeIsEjectableKey,
         [](const Volume& v, const Capacity&) -> std::optional<Value> { return v.isEjectable; }},
        {NSURLVolumeIsRemovableKey,
         [](const Volume& v, const Capacity&) -> std::optional<Value> { return v.isRemovable; }},
        {NSURLVolumeURLForRemountingKey,
         [](const Volume& v, const Capacity&) -> std::optional<Value> {
             return remountURL(v.mount.type, v.mount.source);
         }},
        {NSURLVolumeTotalCapacityKey,
         [](const Volume& v, const Capacity& capacity) {
             return v.isRemote ? std::nullopt
                               : std::optional<Value>(std::uint64_t{capacity.f_blocks} * capacity.f_frsize);
         }},
        {NSURLVolumeAvailableCapacityKey,
         [](const Volume& v, const Capacity& capacity) {
             return v.isRemote ? std::nullopt
                               : std::optional<Value>(std::uint64_t{capacity.f_bavail} * capacity.f_frsize);
         }},
    };
    return table;
}

} // namespace

Volumes::Volumes(LinuxRoot root) : root_(std::move(root)), mountInfo_(root_.path("/proc/self/mountinfo")) {}

std::shared_ptr<const VolumeTable> Volumes::table() const {
    const std::scoped_lock lock(mutex_);
    if (mountInfo_.hasChanged() ||
        table_ == nullptr) { // asked first, so that a change during the reading is seen the next time
        table_ = std::make_shared<const VolumeTable>(readTable());
    }
    return table_;
}

VolumeTable Volumes::readTable() const {
    const std::string mountInfo =
        readBytes(root_.path("/proc/self/mountinfo"), kMountInfoLimit).value_or(std::string());
    const auto hidden = parse::hiddenMounts(readBytes(root_.path("/run/mount/utab")).value_or(std::string()));
    const std::vector<parse::Mount> mounts = parse::mounts(mountInfo);
    VolumeTable table;
    std::set<std::string> devices;
    for (std::size_t index = 0; index < mounts.size(); ++index) {
        const parse::Mount& mount = mounts[index];
        const bool isRemote = isRemoteType(mount.type);
        if ((!isRemote && !(isOnBlockDevice(mount) && isWhole(mount))) || std::ranges::count(hidden, mount.path) != 0 ||
            !isReached(mounts, index)) {
            continue;
        }
        // Subvolumes of one file system have different numbers and the same source; other file systems the same number.
        if (isRemote || (devices.insert(mount.device).second && devices.insert(mount.source).second)) {
            Volume volume = makeVolume(root_, mount);
            table.places[volume.url.absoluteString()] = table.volumes.size();
            table.volumes.push_back(std::move(volume));
        }
    }
    return table;
}

std::optional<NSDictionary> Volumes::resourceValues(const NSURL& url, const std::vector<NSString>& keys) const {
    const auto known = table();
    const auto place = known->places.find(url.absoluteString());
    if (place == known->places.end()) {
        return std::nullopt;
    }
    const Volume& volume = known->volumes[place->second];
    struct statvfs capacity {};
    if (!volume.isRemote && ::statvfs(root_.path(volume.mount.path).c_str(), &capacity) != 0) {
        return std::nullopt;
    }
    std::vector<NSDictionary::Entry> values;
    values.reserve(keys.size());
    for (const NSString& key : keys) {
        const auto attribute = std::ranges::find(attributes(), key, &std::pair<NSString, Attribute>::first);
        auto value = attribute != attributes().end() ? attribute->second(volume, capacity) : std::nullopt;
        if (value.has_value()) {
            values.emplace_back(key, *std::move(value));
        }
    }
    return NSDictionary(std::move(values));
}

} // namespace qk::platform
