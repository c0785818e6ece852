// SPDX-License-Identifier: Apache-2.0
#include "tools/softwareupdate/PackageManagerOutput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace qk::softwareupdate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string fixture(const std::string& name) {
    std::ifstream file(QK_FIXTURES_DIR "/linux/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

PendingUpdate update(const char* name, const char* version, std::optional<std::uint64_t> size = std::nullopt) {
    return {name, version, size, false};
}

TEST(AptUpdates, EmptyOutputHasNone) {
    EXPECT_THAT(aptUpdates(""), IsEmpty());
    EXPECT_THAT(aptUpdates("Reading package lists...\n0 upgraded, 0 newly installed.\n"), IsEmpty());
}

TEST(AptUpdates, InstalledPackagesWithANewerVersionAreUpdates) {
    EXPECT_THAT(aptUpdates(fixture("apt/simulate-dist-upgrade.txt")),
                ElementsAre(update("linux-image-amd64", "6.1.153-1"), update("libc6:i386", "2.36-9+deb12u13"),
                            update("bash", "5.2.15-2+b13"), update("libgcrypt20-dev", "1.10.1-3+deb12u1"),
                            update("libgcrypt20", "1.10.1-3+deb12u1"), update("login", "1:4.13+dfsg1-1+deb12u2"),
                            update("libperl5.36", "5.36.0-7+deb12u4"), update("libpam-modules-bin", "1.5.2-6+deb12u2"),
                            update("tzdata", "2026f-0+deb12u1")));
}

TEST(AptUpdates, PackageInstalledForTheFirstTimeIsNone) {
    EXPECT_THAT(aptUpdates("Inst new (1.0 Debian:12/stable [amd64])\n"), IsEmpty());
    EXPECT_THAT(aptUpdates("Inst new (1.0 Debian:12/stable [amd64]) [other:amd64 on new:amd64] (x)\n"), IsEmpty());
}

TEST(AptUpdates, BrokenLinesAreSkipped) {
    for (const std::string_view line :
         {"Inst", "Inst ", "Inst [", "Inst  [1] (2)", "Inst a [1] ()", "Inst a [1] (", "Inst a [1]", "Inst a b [1] (2)",
          "Conf a [1] (2 x [y])", "XInst a [1] (2)", "Inst [1] (2)"}) {
        EXPECT_THAT(aptUpdates(line), IsEmpty()) << line;
    }
    EXPECT_THAT(aptUpdates("Inst a [1] (2)"), ElementsAre(update("a", "2")));
}

TEST(AptSizes, AreThoseOfTheSamePackageVersionAndArchitecture) {
    const std::string simulation = fixture("apt/simulate-dist-upgrade.txt");
    PendingUpdates updates = aptUpdates(simulation);
    addAptSizes(updates, simulation, fixture("apt/print-uris-dist-upgrade.txt"));
    EXPECT_THAT(updates,
                ElementsAre(update("linux-image-amd64", "6.1.153-1"), update("libc6:i386", "2.36-9+deb12u13", 2646732),
                            update("bash", "5.2.15-2+b13", 1490652),
                            update("libgcrypt20-dev", "1.10.1-3+deb12u1", 751724),
                            update("libgcrypt20", "1.10.1-3+deb12u1", 696204),
                            update("login", "1:4.13+dfsg1-1+deb12u2", 616084),
                            update("libperl5.36", "5.36.0-7+deb12u4", 4207640),
                            update("libpam-modules-bin", "1.5.2-6+deb12u2"), update("tzdata", "2026f-0+deb12u1")));
}

TEST(AptSizes, BrokenLinesAreSkipped) {
    const std::string_view simulation = "Inst a [1] (2 x [all])\n";
    for (const std::string_view line :
         {"", "'", "'http://x'", "'http://x' a_2_all.deb", "'http://x' a_2_all.deb x", "a_2_all.deb 5",
          "'http://x' a_2_all.deb -5", "'http://x' a_3_all.deb 5", "'http://x' a_2_%zz.deb 5"}) {
        PendingUpdates updates = aptUpdates(simulation);
        addAptSizes(updates, simulation, line);
        EXPECT_THAT(updates, ElementsAre(update("a", "2"))) << line;
    }
    PendingUpdates updates = aptUpdates(simulation);
    addAptSizes(updates, simulation, "'http://x' a_2_%61ll.deb 5 MD5Sum:0");
    EXPECT_THAT(updates, ElementsAre(update("a", "2", 5)));
}

TEST(DnfUpdates, EmptyOutputHasNone) {
    EXPECT_THAT(dnfUpdates(""), IsEmpty());
    EXPECT_THAT(dnfUpdates("\n\n"), IsEmpty());
}

TEST(DnfUpdates, LinesAreUpdatesUpToTheObsoletePackages) {
    EXPECT_THAT(dnfUpdates(fixture("dnf/check-update.txt")),
                ElementsAre(update("bash", "5.2.26-3.fc40"), update("kernel-core", "6.8.11-300.fc40"),
                            update("python3-a-very-long-package-name-that-takes-the-whole-line", "2.1.0-1.fc40"),
                            update("vim-minimal", "2:9.1.452-1.fc40")));
}

TEST(DnfUpdates, MessagesAreNone) {
    for (const std::string_view line : {"Security: kernel is", "Last metadata expiration check: 1:02:03 ago on Sat",
                                        "a b c d", "noarchitecture 1.0 updates", ".x86_64 1.0 updates", "one two"}) {
        EXPECT_THAT(dnfUpdates(line), IsEmpty()) << line;
    }
}

TEST(PackageKitUpdate, IsTheFirstTwoPartsOfTheIdentifier) {
    EXPECT_EQ(packageKitUpdate("bash;5.2-1;amd64;debian"), update("bash", "5.2-1"));
    EXPECT_EQ(packageKitUpdate("bash;5.2-1;;"), update("bash", "5.2-1"));
    for (const std::string_view identifier : {"", "bash", "bash;", "bash;5", ";5;x;y", "bash;;x;y"}) {
        EXPECT_EQ(packageKitUpdate(identifier), std::nullopt) << identifier;
    }
}

TEST(Restarts, AreNeededForWhatRunsUntilThen) {
    PendingUpdates updates;
    for (const char* name : {"linux-image-amd64", "libc6", "libc6:i386", "systemd", "dbus", "kernel-core", "glibc",
                             "bash", "linux-image", "systemd-sysv", "dbus-x11", "linux-libc-dev"}) {
        updates.push_back(update(name, "1"));
    }
    markRestarts(updates, "");
    std::vector<std::string> restarting;
    for (const PendingUpdate& each : updates) {
        if (each.restart) {
            restarting.push_back(each.name);
        }
    }
    EXPECT_THAT(restarting,
                ElementsAre("linux-image-amd64", "libc6", "libc6:i386", "systemd", "dbus", "kernel-core", "glibc"));
}

TEST(Restarts, AreNeededForWhatTheSystemLists) {
    PendingUpdates updates{update("bash", "1"), update("ba", "1")};
    markRestarts(updates, "libssl3\nbash\nbash\n");
    EXPECT_TRUE(updates[0].restart);
    EXPECT_FALSE(updates[1].restart);
}

} // namespace
} // namespace qk::softwareupdate
