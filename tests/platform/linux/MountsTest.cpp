// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Mounts.h"

#include "QKFoundation/platform/linux/FileURLs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Mounts, AnEmptyTableHoldsNone) {
    EXPECT_THAT(parse::mounts(""), IsEmpty());
}

TEST(Mounts, DamagedLinesAreLeftOut) {
    EXPECT_THAT(parse::mounts("\n25\n25 1 8:1 / /x rw\n25 1 8:1 / /x rw shared:1\n25 1 8:1 / x rw - ext4 /dev/a rw\n"),
                IsEmpty());
}

TEST(Mounts, LinesWithAndWithoutOptionalFields) {
    EXPECT_THAT(
        parse::mounts("36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 shared:2 - ext3 /dev/root rw,errors=continue\n"
                      "37 35 0:5 / /proc rw - proc proc rw\n"),
        ElementsAre(parse::Mount{"98:0", "/mnt1", "/mnt2", "ext3", "/dev/root", "rw,errors=continue"},
                    parse::Mount{"0:5", "/", "/proc", "proc", "proc", "rw"}));
}

TEST(Mounts, OctalEscapesAreTakenOut) {
    const auto mounts = parse::mounts("1 1 8:1 / /media/my\\040disk\\134\\011x rw - vfat /dev/my\\040disk rw\n");
    ASSERT_EQ(mounts.size(), 1U);
    EXPECT_EQ(mounts[0].path, "/media/my disk\\\tx");
    EXPECT_EQ(mounts[0].source, "/dev/my disk");
}

TEST(Mounts, WhatIsNoEscapeStays) {
    EXPECT_EQ(parse::mounts("1 1 8:1 / /a\\04 rw - ext4 /dev/a rw\n")[0].path, "/a\\04");
    EXPECT_EQ(parse::mounts("1 1 8:1 / /a\\08x9 rw - ext4 /dev/a rw\n")[0].path, "/a\\08x9");
}

TEST(HiddenMounts, AreMarkedByTheirOption) {
    EXPECT_THAT(parse::hiddenMounts(""), IsEmpty());
    EXPECT_THAT(parse::hiddenMounts("SRC=/dev/a TARGET=/a ROOT=/ OPTS=user,x-gvfs-hide\n"
                                    "SRC=/dev/b TARGET=/b ROOT=/ OPTS=x-gvfs-hidden\n"
                                    "SRC=/dev/c TARGET=/my\\040c ROOT=/ OPTS=x-gvfs-hide\n"
                                    "OPTS=x-gvfs-hide\n"),
                ElementsAre("/a", "/my c"));
}

TEST(MountOptions, StandBetweenCommas) {
    EXPECT_FALSE(parse::hasOption("", "rw"));
    EXPECT_FALSE(parse::hasOption("xrw,rwx,x=rw", "rw"));
    EXPECT_TRUE(parse::hasOption("rw", "rw"));
    EXPECT_TRUE(parse::hasOption("rwx,rw", "rw"));
    EXPECT_TRUE(parse::hasOption("a,subvol=/a,b,c", "subvol=/a,b"));
}

TEST(DeviceProperty, IsFoundOnItsOwnLine) {
    EXPECT_EQ(parse::deviceProperty("", "E:ID_FS_LABEL="), "");
    EXPECT_EQ(parse::deviceProperty("S:disk\nE:ID_FS_LABEL_ENC=a\\x20b\nE:ID_FS_LABEL=a b\n", "E:ID_FS_LABEL="), "a b");
}

TEST(FileURLs, FoldersOfAnyBytesHaveOne) {
    EXPECT_EQ(folderURL("/").absoluteString(), "file:///");
    EXPECT_EQ(folderURL("/mnt/a b").absoluteString(), "file:///mnt/a%20b/");
    EXPECT_EQ(folderURL("/mnt/\xFF?#").absoluteString(), "file:///mnt/%FF%3F%23/");
    EXPECT_EQ(folderURL("/mnt/a b").path(), "/mnt/a b");
}

TEST(FileURLs, RemoteFileSystemsNameTheirHost) {
    const struct {
        std::string_view type;
        std::string_view source;
        std::optional<NSString> url;
    } rows[] = {
        {"ext4", "/dev/sda1", std::nullopt},
        {"fuse.encfs", "encfs", std::nullopt},
        {"nfs4", "server:/export/a b", "nfs://server/export/a%20b"},
        {"nfs", "[fe80::1]:/x", "nfs://%5Bfe80::1%5D/x"},
        {"cifs", "//server/share", "smb://server/share"},
        {"fuse.sshfs", "ada@server:/home", "sftp://ada@server/home"},
        {"fuse.sshfs", "server:", "sftp://server:"},
    };
    for (const auto& row : rows) {
        const auto url = remountURL(row.type, row.source);
        EXPECT_EQ(url.has_value() ? std::optional(url->absoluteString()) : std::nullopt, row.url) << row.type;
        EXPECT_EQ(isRemoteType(row.type), row.url.has_value());
    }
}

} // namespace
} // namespace qk::platform
