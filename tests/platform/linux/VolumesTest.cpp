// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Volumes.h"

#include "QKFoundation/platform/linux/FileURLs.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/platform/linux/DescribedDisks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::mountLine;

class VolumesTest : public testing::Test {
protected:
    // Mounts these lines, and makes the folders that can be asked for their capacities.
    void mount(const std::string& lines, const std::vector<std::string>& folders = {}) {
        root_.write("proc/self/mountinfo", lines);
        for (const std::string& folder : folders) {
            std::filesystem::create_directories(root_.path() + folder);
        }
    }
    [[nodiscard]] const tests::TemporaryFolder& root() const { return root_; }
    [[nodiscard]] Volumes volumes() const { return Volumes(LinuxRoot(root_.path())); }
    [[nodiscard]] std::vector<std::string> paths() const {
        std::vector<std::string> found;
        const auto table = volumes().table();
        for (const Volume& volume : table->volumes) {
            found.push_back(volume.mount.path);
        }
        return found;
    }
    [[nodiscard]] Volume only() const {
        const auto table = volumes().table();
        EXPECT_EQ(table->volumes.size(), 1U);
        return table->volumes.empty() ? Volume{{}, folderURL("/"), "", false, false, false, false}
                                      : table->volumes.front();
    }

private:
    tests::TemporaryFolder root_;
};

TEST_F(VolumesTest, AMachineWithoutATableHasNone) {
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_EQ(volumes().resourceValues(folderURL("/"), {NSURLVolumeNameKey}), std::nullopt);
}

TEST_F(VolumesTest, WhatLiesOnNoDeviceIsHidden) {
    mount(mountLine("0:22", "/", "/proc", "proc", "proc") + mountLine("0:23", "/", "/sys", "sysfs", "sysfs") +
          mountLine("0:5", "/", "/dev", "devtmpfs", "udev") + mountLine("0:24", "/", "/run", "tmpfs", "tmpfs") +
          mountLine("0:26", "/", "/sys/fs/cgroup", "cgroup2", "cgroup2") +
          mountLine("0:40", "/", "/", "overlay", "overlay", "rw,lowerdir=/l,upperdir=/u,workdir=/w") +
          mountLine("0:44", "/", "/run/user/1000/doc", "fuse.portal", "portal") +
          mountLine("0:45", "/", "/boot/efi", "autofs", "/dev/sda1") +
          mountLine("7:3", "/", "/snap/core/1", "squashfs", "/dev/loop3"));
    EXPECT_THAT(paths(), IsEmpty());
}

TEST_F(VolumesTest, ListInTheOrderOfMounting) {
    mount(mountLine("8:2", "/", "/", "ext4", "/dev/sda2") + mountLine("8:1", "/", "/boot", "ext4", "/dev/sda1") +
          mountLine("0:50", "/", "/data/b", "zfs", "tank/b") + mountLine("0:51", "/", "/data/a", "zfs", "tank/a") +
          mountLine("8:33", "/", "/mnt/windows", "fuseblk", "/dev/sdc1"));
    EXPECT_THAT(paths(), ElementsAre("/", "/boot", "/data/b", "/data/a", "/mnt/windows"));
}

TEST_F(VolumesTest, BindMountsAndSecondMountsAreHidden) {
    mount(mountLine("8:2", "/", "/", "ext4", "/dev/sda2") +
          mountLine("8:2", "/srv/www", "/var/www", "ext4", "/dev/sda2") +
          mountLine("8:2", "/", "/mnt/again", "ext4", "/dev/sda2"));
    EXPECT_THAT(paths(), ElementsAre("/"));
}

TEST_F(VolumesTest, OfABtrfsOnlyOneSubvolumeIsListed) {
    mount(mountLine("0:30", "/@", "/", "btrfs", "/dev/sda2", "rw,space_cache,subvolid=256,subvol=/@") +
          mountLine("0:30", "/@home", "/home", "btrfs", "/dev/sda2", "rw,subvolid=257,subvol=/@home") +
          mountLine("0:31", "/@\\040two", "/mnt", "btrfs", "/dev/sdb1", "rw,subvolid=5,subvol=/@\\040two") +
          mountLine("0:32", "/@x/folder", "/bound", "btrfs", "/dev/sdc1", "rw,subvolid=9,subvol=/@x"));
    EXPECT_THAT(paths(), ElementsAre("/", "/mnt"));
}

TEST_F(VolumesTest, OfMountsOnOneFolderOnlyTheLastCanBeSeen) {
    mount(mountLine("8:1", "/", "/mnt", "ext4", "/dev/sda1") + mountLine("8:2", "/", "/mnt", "ext4", "/dev/sda2") +
          mountLine("8:3", "/", "/covered", "ext4", "/dev/sda3") + mountLine("0:9", "/", "/covered", "tmpfs", "none"));
    const auto table = volumes().table();
    ASSERT_EQ(table->volumes.size(), 1U);
    EXPECT_EQ(table->volumes[0].mount.source, "/dev/sda2");
}

TEST_F(VolumesTest, TheOptionXGvfsHideHides) {
    mount(mountLine("8:1", "/", "/", "ext4", "/dev/sda1") + mountLine("8:2", "/", "/my\\040own", "ext4", "/dev/sda2"));
    root().write("run/mount/utab", "SRC=/dev/sda2 TARGET=/my\\040own ROOT=/ OPTS=x-gvfs-hide\n");
    EXPECT_THAT(paths(), ElementsAre("/"));
}

TEST_F(VolumesTest, RemoteOnesAreRemountableAndNeverTouched) {
    // None of these folders is there, so whoever asked for their capacities would fail.
    mount(mountLine("0:60", "/", "/net/home", "nfs4", "server:/home") +
          mountLine("0:61", "/", "/net/share", "cifs", "//server/share") +
          mountLine("0:62", "/", "/net/ssh", "fuse.sshfs", "ada@server:"));
    const Volumes all = volumes();
    const auto table = all.table();
    for (const Volume& volume : table->volumes) {
        EXPECT_TRUE(volume.isRemote);
        const auto values = all.resourceValues(
            volume.url, {NSURLVolumeNameKey, NSURLVolumeURLForRemountingKey, NSURLVolumeTotalCapacityKey});
        ASSERT_TRUE(values.has_value()) << volume.mount.path;
        EXPECT_NE(values->objectForKey(NSURLVolumeURLForRemountingKey), nullptr);
        EXPECT_EQ(values->objectForKey(NSURLVolumeTotalCapacityKey), nullptr);
    }
    EXPECT_THAT(paths(), ElementsAre("/net/home", "/net/share", "/net/ssh"));
}

TEST_F(VolumesTest, WhatIsReachedThroughAnotherMachineIsHidden) {
    mount(mountLine("8:1", "/", "/net/disk", "ext4", "/dev/sda1") + mountLine("0:60", "/", "/net", "nfs", "server:/x") +
          mountLine("8:2", "/", "/network", "ext4", "/dev/sda2"));
    EXPECT_THAT(paths(), ElementsAre("/net", "/network"));
    mount(mountLine("0:60", "/", "/", "9p", "root") + mountLine("8:2", "/", "/data", "ext4", "/dev/sda2"));
    EXPECT_THAT(paths(), ElementsAre("/", "/data")); // without its root nothing runs at all
}

TEST_F(VolumesTest, APartitionIsLikeItsDisk) {
    tests::addDisk(root(), "pci0000:00/0000:00:17.0/ata1/block/sda", "8:0");
    tests::addPartition(root(), "pci0000:00/0000:00:17.0/ata1/block/sda/sda1", "8:1");
    mount(mountLine("8:1", "/", "/", "ext4", "/dev/sda1"));
    const Volume volume = only();
    EXPECT_TRUE(volume.isInternal);
    EXPECT_FALSE(volume.isRemovable);
    EXPECT_FALSE(volume.isEjectable);
}

TEST_F(VolumesTest, AStickIsRemovableAndExternal) {
    tests::addDisk(root(), "pci0000:00/usb2/2-1/host6/block/sdb", "8:16", true);
    tests::addPartition(root(), "pci0000:00/usb2/2-1/host6/block/sdb/sdb1", "8:17");
    mount(mountLine("8:17", "/", "/media/stick", "vfat", "/dev/sdb1"));
    EXPECT_TRUE(only().isRemovable);
    EXPECT_FALSE(only().isInternal);
    mount(mountLine("0:38", "/", "/media/stick", "btrfs", "/dev/sdb1")); // a number that /sys does not know
    std::filesystem::create_directories(root().path("dev"));
    root().write("dev/sdb1", "");
    EXPECT_TRUE(only().isRemovable);
    EXPECT_FALSE(only().isInternal);
}

TEST_F(VolumesTest, AnExternalDiskThatStaysIsNotRemovable) {
    tests::addDisk(root(), "pci0000:00/usb2/2-2/block/sdc", "8:32");
    mount(mountLine("8:32", "/", "/media/disk", "ext4", "/dev/sdc"));
    EXPECT_FALSE(only().isRemovable);
    EXPECT_FALSE(only().isInternal);
}

TEST_F(VolumesTest, DiscsAndMountedImagesAreEjectable) {
    tests::addDisk(root(), "pci0000:00/ata3/block/sr0", "11:0", true);
    mount(mountLine("11:0", "/", "/media/cdrom", "iso9660", "/dev/sr0"));
    EXPECT_TRUE(only().isEjectable);
    tests::addDisk(root(), "virtual/block/loop7", "7:7");
    mount(mountLine("7:7", "/", "/mnt/image", "ext4", "/dev/loop7"));
    EXPECT_FALSE(only().isEjectable);
    root().write("sys/devices/virtual/block/loop7/loop/backing_file", "/home/image\n");
    EXPECT_TRUE(only().isEjectable);
}

TEST_F(VolumesTest, AMappedDeviceIsLikeAllOfItsDisks) {
    tests::addDisk(root(), "pci0000:00/ata1/block/sda", "8:0");
    tests::addPartition(root(), "pci0000:00/ata1/block/sda/sda3", "8:3");
    tests::addDisk(root(), "pci0000:00/usb1/block/sdb", "8:16", true);
    tests::addDisk(root(), "virtual/block/dm-0", "254:0");
    tests::addSlave(root(), "virtual/block/dm-0", "pci0000:00/ata1/block/sda/sda3");
    mount(mountLine("254:0", "/", "/", "ext4", "/dev/mapper/vg-root"));
    EXPECT_FALSE(only().isRemovable);
    EXPECT_TRUE(only().isInternal);
    tests::addSlave(root(), "virtual/block/dm-0", "pci0000:00/usb1/block/sdb");
    EXPECT_TRUE(only().isRemovable);
    EXPECT_FALSE(only().isInternal);
}

TEST_F(VolumesTest, DevicesThatLieOnThemselvesEndSomewhere) {
    tests::addDisk(root(), "virtual/block/dm-0", "254:0");
    tests::addSlave(root(), "virtual/block/dm-0", "virtual/block/dm-0");
    mount(mountLine("254:0", "/", "/", "ext4", "/dev/dm-0"));
    EXPECT_TRUE(only().isInternal);
}

TEST_F(VolumesTest, TheNameIsTheLabelAndElseThePathsLastPart) {
    mount(mountLine("8:1", "/", "/", "ext4", "/dev/sda1"));
    EXPECT_EQ(only().name, "/");
    mount(mountLine("8:1", "/", "/media/my\\040disk", "ext4", "/dev/sda1"));
    EXPECT_EQ(only().name, "my disk");
    root().write("run/udev/data/b8:1",
                 "S:disk/by-label/Backup\nE:ID_FS_LABEL_ENC=Back\\x20up\nE:ID_FS_LABEL=Back up\n");
    EXPECT_EQ(only().name, "Back up");
}

TEST_F(VolumesTest, ValuesAreThoseThatWereAskedFor) {
    mount(mountLine("8:1", "/", "/a\\040b", "ext4", "/dev/sda1") + mountLine("8:2", "/", "/gone", "ext4", "/dev/sda2"),
          {"/a b"});
    const Volumes all = volumes();
    EXPECT_EQ(all.resourceValues(folderURL("/a b"), {}), NSDictionary());
    EXPECT_EQ(all.resourceValues(folderURL("/a b"), {"NSURLNoSuchKey", NSURLVolumeNameKey}),
              (NSDictionary{{NSURLVolumeNameKey, "a b"}}));
    EXPECT_EQ(all.resourceValues(folderURL("/gone"), {NSURLVolumeNameKey}), std::nullopt);
    EXPECT_EQ(all.resourceValues(folderURL("/a"), {NSURLVolumeNameKey}), std::nullopt);
    const auto values =
        all.resourceValues(folderURL("/a b"), {NSURLVolumeTotalCapacityKey, NSURLVolumeAvailableCapacityKey});
    ASSERT_TRUE(values.has_value());
    EXPECT_EQ(values->count(), 2U);
}

} // namespace
} // namespace qk::platform
