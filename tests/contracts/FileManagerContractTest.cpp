// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <gmock/gmock.h>

namespace qk::tests {
namespace {

using testing::IsEmpty;
using testing::Optional;
using testing::UnorderedElementsAre;

constexpr const char kSystemVersion[] = "/System/Library/CoreServices/SystemVersion.plist";

class FileManagerContract : public Contract {
protected:
    NSString below(const NSString& name) { return folder_ + "/" + name; }
    const NSString& folder() const { return folder_; }
    platform::FileManager& files() { return *machine_.fileManager; }

private:
    NSString folder_ = subject().emptyFolder();
    platform::Services machine_ = subject().described();
};
INSTANTIATE_TEST_SUITE_P(Of, FileManagerContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(FileManagerContract, WhatIsNotThereIsNothing) {
    EXPECT_EQ(files().contentsOfDirectoryAtPath(below("missing")), std::nullopt);
    EXPECT_EQ(files().dictionaryWithContentsOfFile(below("missing")), std::nullopt);
    EXPECT_EQ(subject().silent().fileManager->dictionaryWithContentsOfFile(kSystemVersion), std::nullopt);
}

TEST_P(FileManagerContract, FilesAndFoldersExistAndAreToldApart) {
    subject().makeFile(below("file"));
    bool isDirectory = true;
    EXPECT_TRUE(files().fileExistsAtPath(below("file"), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_TRUE(files().fileExistsAtPath(folder(), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_TRUE(files().fileExistsAtPath(folder() + "/", nullptr));
    EXPECT_FALSE(files().fileExistsAtPath(below("missing"), nullptr));
    EXPECT_FALSE(files().fileExistsAtPath(below("file/below"), nullptr));
    EXPECT_FALSE(files().fileExistsAtPath("", nullptr));
}

TEST_P(FileManagerContract, EmptyFolderIsEmptyAndNotNothing) {
    EXPECT_THAT(files().contentsOfDirectoryAtPath(folder()), Optional(IsEmpty()));
}

TEST_P(FileManagerContract, ListingHasTheNamesOfOneLevel) {
    subject().makeFile(below("file"));
    subject().makeFile(below("sub/deeper"));
    subject().makeFile(below(".hidden"));
    EXPECT_THAT(files().contentsOfDirectoryAtPath(folder()),
                Optional(UnorderedElementsAre(NSString("file"), NSString("sub"), NSString(".hidden"))));
    EXPECT_THAT(files().contentsOfDirectoryAtPath(folder() + "/"),
                Optional(UnorderedElementsAre(NSString("file"), NSString("sub"), NSString(".hidden"))));
}

TEST_P(FileManagerContract, FileHasNoListing) {
    subject().makeFile(below("file"));
    EXPECT_EQ(files().contentsOfDirectoryAtPath(below("file")), std::nullopt);
}

TEST_P(FileManagerContract, OneFolderIsMadeInAnExistingOne) {
    EXPECT_TRUE(files().createDirectoryAtPath(below("new"), false));
    EXPECT_THAT(files().contentsOfDirectoryAtPath(below("new")), Optional(IsEmpty()));
    EXPECT_FALSE(files().createDirectoryAtPath(below("other/new"), false));
    EXPECT_EQ(files().contentsOfDirectoryAtPath(below("other")), std::nullopt);
}

TEST_P(FileManagerContract, FoldersAboveAreMadeWhenAskedFor) {
    EXPECT_TRUE(files().createDirectoryAtPath(below("a/b/c"), true));
    EXPECT_THAT(files().contentsOfDirectoryAtPath(below("a/b")), Optional(UnorderedElementsAre(NSString("c"))));
}

TEST_P(FileManagerContract, ExistingFolderCountsOnlyWithTheFoldersAbove) {
    EXPECT_TRUE(files().createDirectoryAtPath(folder(), true));
    EXPECT_FALSE(files().createDirectoryAtPath(folder(), false));
}

TEST_P(FileManagerContract, FileInTheWayIsAFailure) {
    subject().makeFile(below("file"));
    for (const bool intermediate : {false, true}) {
        EXPECT_FALSE(files().createDirectoryAtPath(below("file"), intermediate));
        EXPECT_FALSE(files().createDirectoryAtPath(below("file/below"), intermediate));
        EXPECT_FALSE(files().createDirectoryAtPath("", intermediate));
    }
}

TEST_P(FileManagerContract, FileThatIsNoPropertyListHasNoDictionary) {
    subject().makeFile(below("file"));
    EXPECT_EQ(files().dictionaryWithContentsOfFile(below("file")), std::nullopt);
    EXPECT_EQ(files().dictionaryWithContentsOfFile(folder()), std::nullopt);
}

TEST_P(FileManagerContract, SystemVersionDescribesTheSystem) {
    EXPECT_EQ(files().dictionaryWithContentsOfFile(kSystemVersion),
              (NSDictionary{{"ProductName", "Example Linux"},
                            {"ProductVersion", "22.04"},
                            {"ProductBuildVersion", "20240131.2"}}));
}

} // namespace
} // namespace qk::tests
