// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FolderWalk.h"

#include "tests/platform/linux/FileDates.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using tests::setDates;
using tests::TemporaryFolder;

struct Found {
    std::vector<std::string> entered;
    std::vector<std::string> asked;
    std::vector<std::string> found;
    FileDates last;
    std::size_t total = 0;
};

class Notes final : public FolderVisitor, public Found {
public:
    void enter(std::string_view folder) override {
        folder_ = folder;
        entered.emplace_back(folder);
    }
    bool wants(std::string_view name, FileKind kind) override {
        asked.emplace_back(name);
        return kind != unwanted;
    }
    void visit(std::string_view name, FileKind kind, const FileDates& dates) override {
        const char letter = kind == FileKind::folder ? '/' : kind == FileKind::symbolicLink ? '@' : ' ';
        found.push_back((folder_ == "/" ? "" : folder_) + "/" + std::string(name) + letter);
        last = dates;
    }
    void examined(std::size_t entries) override { total += entries; }

    std::optional<FileKind> unwanted;

private:
    std::string folder_;
};

class FolderWalkTest : public testing::Test {
protected:
    FolderWalkTest() : root(std::filesystem::canonical(temporary.path()).string()) {}

    Found walk(std::vector<std::string> roots) {
        FolderWalk walk(std::move(roots), isCancelled);
        Notes notes;
        walk.work(notes);
        return notes;
    }
    [[nodiscard]] std::vector<std::string> below(std::vector<std::string> paths) const {
        for (std::string& path : paths) {
            path.erase(0, root.size());
        }
        return paths;
    }

    TemporaryFolder temporary;
    std::string root;
    std::atomic<bool> isCancelled = false;
};

TEST_F(FolderWalkTest, WithoutRootsThereIsNothing) {
    EXPECT_THAT(walk({}).entered, IsEmpty());
}

TEST_F(FolderWalkTest, WhatIsNoFolderHoldsNothing) {
    const std::string file = temporary.write("file", "");
    EXPECT_THAT(walk({temporary.path("absent"), file}).entered, IsEmpty());
}

TEST_F(FolderWalkTest, FilesFoldersAndLinksAreTold) {
    temporary.write("a/file.txt", "");
    std::filesystem::create_symlink("file.txt", temporary.path("a/link"));
    EXPECT_THAT(below(walk({root}).found), UnorderedElementsAre("/a/", "/a/file.txt ", "/a/link@"));
}

TEST_F(FolderWalkTest, PipesAreNotTold) {
    ASSERT_EQ(::mkfifo(temporary.path("pipe").c_str(), 0600), 0);
    const Found notes = walk({root});
    EXPECT_THAT(notes.asked, IsEmpty());
    EXPECT_EQ(notes.total, 1U);
}

TEST_F(FolderWalkTest, WhatBeginsWithADotIsLeftOutWithAllBelowIt) {
    temporary.write(".hidden/file", "");
    temporary.write("a/.file", "");
    EXPECT_THAT(below(walk({root}).found), ElementsAre("/a/"));
}

TEST_F(FolderWalkTest, ARootMayBeHidden) {
    temporary.write(".hidden/file", "");
    EXPECT_THAT(below(walk({root + "/.hidden"}).found), ElementsAre("/.hidden/file "));
}

TEST_F(FolderWalkTest, LinksAreNotFollowed) {
    temporary.write("elsewhere/file", "");
    temporary.write("root/file", "");
    std::filesystem::create_directory_symlink("../elsewhere", temporary.path("root/link"));
    EXPECT_THAT(below(walk({root + "/root"}).found), UnorderedElementsAre("/root/file ", "/root/link@"));
    EXPECT_THAT(walk({root + "/root/link"}).entered, IsEmpty());
}

TEST_F(FolderWalkTest, LinksOnTheWayAreNotFollowed) {
    temporary.write("elsewhere/folder/file", "");
    std::filesystem::create_directory_symlink("elsewhere", temporary.path("link"));
    const Found notes = walk({root + "/link/folder"});
    EXPECT_THAT(notes.found, IsEmpty());
}

TEST_F(FolderWalkTest, ALinkToAFolderAboveMakesNoCircle) {
    temporary.write("a/b/file", "");
    std::filesystem::create_directory_symlink("../..", temporary.path("a/b/up"));
    EXPECT_EQ(walk({root}).found.size(), 4U);
}

TEST_F(FolderWalkTest, TheFilesOfTheKernelAreNotEntered) {
    EXPECT_THAT(walk({"/proc"}).entered, IsEmpty());
}

TEST_F(FolderWalkTest, FoldersComeBeforeWhatIsInThem) {
    temporary.write("a/b/c/file", "");
    temporary.write("d/e/file", "");
    std::vector<std::size_t> depths;
    for (const std::string& folder : below(walk({root}).entered)) {
        depths.push_back(static_cast<std::size_t>(std::ranges::count(folder, '/')));
    }
    EXPECT_TRUE(std::ranges::is_sorted(depths));
    EXPECT_EQ(depths.size(), 6U);
}

TEST_F(FolderWalkTest, TheDatesAreThoseOfTheFileItself) {
    const std::string file = temporary.write("file", "");
    setDates(file, 1000, 2000);
    const Found notes = walk({root});
    EXPECT_EQ(notes.last.modified, 1000);
    EXPECT_EQ(notes.last.accessed, 2000);
}

TEST_F(FolderWalkTest, MomentsBefore1970AreNegative) {
    const std::string file = temporary.write("file", "");
    setDates(file, -1000, 0);
    EXPECT_EQ(walk({root}).last.modified, -1000);
}

TEST_F(FolderWalkTest, WhatIsNotWantedIsNotVisitedButFoldersAreEntered) {
    temporary.write("a/file", "");
    FolderWalk walk({root}, isCancelled);
    Notes notes;
    notes.unwanted = FileKind::folder;
    walk.work(notes);
    EXPECT_THAT(below(notes.found), ElementsAre("/a/file "));
}

TEST_F(FolderWalkTest, EntriesAreCountedWhetherTheyAreWantedOrNot) {
    for (int index = 0; index < 100; ++index) {
        temporary.write("a/" + std::to_string(index), "");
    }
    EXPECT_EQ(walk({root}).total, 101U);
}

TEST_F(FolderWalkTest, NamesMayBeAnyBytes) {
    temporary.write("a\xFF/\xC3 b\n", "");
    EXPECT_THAT(below(walk({root}).found), ElementsAre("/a\xFF/", "/a\xFF/\xC3 b\n "));
}

TEST_F(FolderWalkTest, FoldersWithPathsThatAreTooLongAreNotEntered) {
    const std::string name(200, 'x');
    int parent = ::open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    constexpr int kDepth = 25;
    for (int depth = 0; depth < kDepth; ++depth) {
        ASSERT_EQ(::mkdirat(parent, name.c_str(), 0700), 0);
        const int child = ::openat(parent, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        ::close(parent);
        parent = child;
    }
    ::close(parent);
    const Found notes = walk({root});
    EXPECT_GE(notes.entered.size(), 18U);
    EXPECT_LT(notes.entered.size(), 22U);
}

TEST_F(FolderWalkTest, ACancelledWalkEnds) {
    temporary.write("a/file", "");
    isCancelled = true;
    EXPECT_THAT(walk({root}).found, IsEmpty());
}

TEST_F(FolderWalkTest, HelpIsAskedForOnceWhenThereAreManyFolders) {
    for (int index = 0; index < 40; ++index) {
        temporary.write(std::to_string(index) + "/a/file", "");
    }
    FolderWalk many({root}, isCancelled);
    int calls = 0;
    many.setHelp([&calls] { ++calls; });
    Notes notes;
    many.work(notes);
    EXPECT_EQ(calls, 1);

    FolderWalk few({root + "/1"}, isCancelled);
    few.setHelp([&calls] { ++calls; });
    few.work(notes);
    EXPECT_EQ(calls, 1);
}

TEST_F(FolderWalkTest, HelpThatComesTooLateFindsNothing) {
    temporary.write("a/file", "");
    FolderWalk walk({root}, isCancelled);
    Notes first;
    walk.work(first);
    Notes second;
    walk.work(second);
    EXPECT_THAT(second.found, IsEmpty());
}

TEST_F(FolderWalkTest, TwoThreadsFindEverythingOnce) {
    std::set<std::string> made;
    for (int index = 0; index < 300; ++index) {
        const std::string folder = std::to_string(index % 30) + "/" + std::to_string(index);
        temporary.write(folder + "/file", "");
        made.insert({"/" + std::to_string(index % 30) + "/", "/" + folder + "/", "/" + folder + "/file "});
    }
    FolderWalk walk({root}, isCancelled);
    Notes first;
    Notes second;
    std::thread other([&] { walk.work(second); });
    walk.work(first);
    other.join();
    std::vector<std::string> all = below(first.found);
    std::ranges::copy(below(second.found), std::back_inserter(all));
    EXPECT_EQ(all.size(), made.size());
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()), made);
}

TEST_F(FolderWalkTest, AWalkThatIsCancelledMeanwhileEndsForAll) {
    for (int index = 0; index < 300; ++index) {
        temporary.write(std::to_string(index) + "/a/file", "");
    }
    FolderWalk walk({root}, isCancelled);
    Notes first;
    Notes second;
    std::thread other([&] { walk.work(second); });
    std::thread canceller([&] { isCancelled = true; });
    walk.work(first);
    other.join();
    canceller.join();
    EXPECT_LE(first.found.size() + second.found.size(), 900U);
}

TEST_F(FolderWalkTest, FilesComeAndGoMeanwhile) {
    constexpr int kFiles = 300;
    temporary.write("stays/file", "");
    std::atomic<bool> isOver = false;
    std::thread other([&] {
        for (int index = 0; !isOver; index = (index + 1) % kFiles) {
            const std::string folder = temporary.path("x" + std::to_string(index));
            std::filesystem::create_directories(folder + "/y");
            std::filesystem::remove_all(folder);
        }
    });
    for (int pass = 0; pass < 20; ++pass) {
        EXPECT_THAT(walk({root}).found, testing::Contains(root + "/stays/file "));
    }
    isOver = true;
    other.join();
}

TEST(FileFacts, NothingIsKnownOfWhatIsNotThere) {
    EXPECT_FALSE(fileFacts("/absent/file").has_value());
}

TEST(FileFacts, ALinkIsTheLinkItself) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("absent", folder.path("link"));
    setDates(folder.path("link"), 1000, 2000);
    const auto facts = fileFacts(folder.path("link"));
    ASSERT_TRUE(facts.has_value());
    EXPECT_EQ(facts->kind, FileKind::symbolicLink);
    EXPECT_EQ(facts->dates.modified, 1000);
}

TEST(FileFacts, DevicesAreNone) {
    EXPECT_FALSE(fileFacts("/dev/null").has_value());
}

} // namespace
} // namespace qk::platform
