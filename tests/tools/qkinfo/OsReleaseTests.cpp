// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/OsRelease.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace qk::info {

namespace {

/// A folder of this test's own, gone afterwards.
class Root {
public:
    Root() {
        std::string name = (std::filesystem::temp_directory_path() / "qkinfo-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;
    ~Root() { std::filesystem::remove_all(path_); }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    void write(const std::filesystem::path& name, std::string_view text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name) << text;
    }

private:
    std::filesystem::path path_;
};

} // namespace

TEST(OsRelease, WithoutAnAssignmentThereIsNoName) {
    for (const std::string_view text :
         {"", "\n", "NAME=Debian\n", "#PRETTY_NAME=no\n", "XPRETTY_NAME=no", "PRETTY_NAME"}) {
        EXPECT_EQ(prettyName(text), std::nullopt) << text;
    }
}

TEST(OsRelease, ReadsTheFormsOfAnAssignment) {
    struct Case {
        std::string_view text;
        std::optional<NSString> name;
    };
    for (const Case& c : std::array{
             Case{"PRETTY_NAME=Arch", NSString("Arch")},
             Case{"PRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\nNAME=x\n",
                  NSString("Debian GNU/Linux 12 (bookworm)")},
             Case{"A=1\r\n  PRETTY_NAME='One $HOME \\'\r\n", NSString("One $HOME \\")},
             Case{"PRETTY_NAME=\"a \\\"b\\\" \\$ \\\\ \\`\"", NSString("a \"b\" $ \\ `")},
             Case{"PRETTY_NAME=\"first\"\nPRETTY_NAME=\"second\"", NSString("second")},
             Case{"PRETTY_NAME=\"\"", NSString("")},
             Case{"PRETTY_NAME=", NSString("")},
             Case{"PRETTY_NAME=\"open", std::nullopt},
             Case{"PRETTY_NAME=two words", std::nullopt},
             Case{"PRETTY_NAME=\"\xff\"", std::nullopt},
         }) {
        EXPECT_EQ(prettyName(c.text), c.name) << c.text;
    }
}

TEST(OsRelease, WithoutFilesThereIsNoName) {
    const Root root;
    EXPECT_EQ(distributionName(root.path()), std::nullopt);
}

TEST(OsRelease, TheSecondFileCountsOnlyWithoutTheFirst) {
    const Root root;
    root.write("usr/lib/os-release", "PRETTY_NAME=vendor\n");
    EXPECT_EQ(distributionName(root.path()), NSString("vendor"));
    root.write("etc/os-release", "NAME=x\n");
    EXPECT_EQ(distributionName(root.path()), std::nullopt);
    root.write("etc/os-release", "PRETTY_NAME=own\n");
    EXPECT_EQ(distributionName(root.path()), NSString("own"));
}

TEST(OsRelease, AFolderInTheFilesPlaceIsNotRead) {
    const Root root;
    std::filesystem::create_directories(root.path() / "etc/os-release");
    EXPECT_EQ(distributionName(root.path()), std::nullopt);
}

} // namespace qk::info
