// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSTask+Zip.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>

using namespace qk::NSTask_Zip;
using qk::platform::TaskExit;
using qk::platform::TaskRequest;
using qk::platform::TaskStream;

namespace qk {
namespace {

class NSTaskZipTest : public testing::Test {
protected:
    static constexpr const char kZip[] = "/usr/bin/zip";
    static constexpr const char kUnzip[] = "/usr/bin/unzip";

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(NSTaskZipTest, NothingGivenIsNothingWithoutALaunch) {
    EXPECT_EQ(zipDirectoryAtPath(std::nullopt), std::nullopt);
    EXPECT_EQ(unzipFileAtPath(std::nullopt, "/tmp/out"), std::nullopt);
    EXPECT_EQ(unzipFileAtPath("/tmp/a.zip", std::nullopt), std::nullopt);
    EXPECT_EQ(unzipFileAtURL(std::nullopt, NSURL::fileURLWithPath("/tmp/out")), std::nullopt);
    EXPECT_EQ(unzipFileAtURL(NSURL::fileURLWithPath("/tmp/a.zip"), std::nullopt), std::nullopt);
    EXPECT_TRUE(machine.taskLauncher.requests().empty());
    EXPECT_FALSE(machine.fileManager.isDirectory("/tmp/out"));
}

TEST_F(NSTaskZipTest, PacksAFolderBesideItself) {
    machine.taskLauncher.addProgram(kZip, NSData());
    EXPECT_EQ(zipDirectoryAtPath("/tmp/out"), "/tmp/out.zip");
    const auto requests = machine.taskLauncher.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].launchPath, NSString(kZip));
    EXPECT_EQ(requests[0].arguments, (std::vector<NSString>{"-r", "-j", "/tmp/out.zip", "/tmp/out", "/tmp/out"}));
    EXPECT_EQ(requests[0].currentDirectoryPath, std::nullopt);
    EXPECT_EQ(requests[0].standardOutput, TaskStream::Discard);
    EXPECT_EQ(requests[0].standardError, TaskStream::Discard);
}

TEST_F(NSTaskZipTest, ATrailingSlashGoesFromTheArchiveAlone) {
    machine.taskLauncher.addProgram(kZip, NSData());
    EXPECT_EQ(zipDirectoryAtPath("/tmp/out/"), "/tmp/out.zip");
    EXPECT_EQ(machine.taskLauncher.requests().at(0).arguments,
              (std::vector<NSString>{"-r", "-j", "/tmp/out.zip", "/tmp/out/", "/tmp/out/"}));
}

TEST_F(NSTaskZipTest, TheFoldersOwnExtensionStays) {
    machine.taskLauncher.addProgram(kZip, NSData());
    EXPECT_EQ(zipDirectoryAtPath("/tmp/out.d"), "/tmp/out.d.zip");
}

TEST_F(NSTaskZipTest, PathsThatTakeNoExtensionAreNothing) {
    EXPECT_EQ(zipDirectoryAtPath(""), std::nullopt);
    EXPECT_EQ(zipDirectoryAtPath("/"), std::nullopt);
    EXPECT_TRUE(machine.taskLauncher.requests().empty());
}

TEST_F(NSTaskZipTest, AnyOtherExitStatusIsNothing) {
    machine.taskLauncher.addProgram(kZip, NSData(), 12);
    EXPECT_EQ(zipDirectoryAtPath("/tmp/out"), std::nullopt);
}

TEST_F(NSTaskZipTest, AToolThatASignalEndedIsNothing) {
    machine.taskLauncher.addProgram(kZip, [](const TaskRequest&) { return TaskExit{0, true, NSData()}; });
    EXPECT_EQ(zipDirectoryAtPath("/tmp/out"), std::nullopt);
}

TEST_F(NSTaskZipTest, AMissingToolRaises) {
    EXPECT_THROW((void)zipDirectoryAtPath("/tmp/out"), NSInvalidArgumentException);
    EXPECT_THROW((void)unzipFileAtPath("/tmp/a.zip", "/tmp/out"), NSInvalidArgumentException);
}

TEST_F(NSTaskZipTest, UnpackingMakesTheFolderFirst) {
    bool wasThere = false;
    machine.taskLauncher.addProgram(kUnzip, [&](const TaskRequest& request) {
        wasThere = machine.fileManager.isDirectory(*request.currentDirectoryPath);
        machine.fileManager.addFile("/tmp/deep/out/b.txt");
        machine.fileManager.addDirectory("/tmp/deep/out/folder/below");
        return TaskExit{};
    });
    EXPECT_EQ(unzipFileAtPath("/tmp/a.zip", "/tmp/deep/out"), (std::vector<NSString>{"b.txt", "folder"}));
    EXPECT_TRUE(wasThere);
}

TEST_F(NSTaskZipTest, UnpackingRunsInTheFolder) {
    machine.taskLauncher.addProgram(kUnzip, NSData());
    (void)unzipFileAtPath("/tmp/a.zip", "/tmp/out");
    const auto requests = machine.taskLauncher.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].launchPath, NSString(kUnzip));
    EXPECT_EQ(requests[0].arguments, (std::vector<NSString>{"-q", "/tmp/a.zip"}));
    EXPECT_EQ(requests[0].currentDirectoryPath, "/tmp/out");
    EXPECT_EQ(requests[0].standardOutput, TaskStream::Inherit);
    EXPECT_EQ(requests[0].standardError, TaskStream::Inherit);
}

TEST_F(NSTaskZipTest, UnpackingListsWhateverTheFolderHolds) {
    machine.fileManager.addFile("/tmp/out/earlier.txt");
    machine.taskLauncher.addProgram(kUnzip, NSData(), 9);
    EXPECT_EQ(unzipFileAtPath("/tmp/damaged.zip", "/tmp/out"), std::vector<NSString>{"earlier.txt"});
}

TEST_F(NSTaskZipTest, AFolderThatCannotBeReadIsNothing) {
    machine.fileManager.addDirectory("/tmp/out");
    machine.fileManager.denyReading("/tmp/out");
    machine.taskLauncher.addProgram(kUnzip, NSData());
    EXPECT_EQ(unzipFileAtPath("/tmp/a.zip", "/tmp/out"), std::nullopt);
}

TEST_F(NSTaskZipTest, AFolderThatCannotBeMadeStillRunsTheTool) {
    machine.fileManager.addFile("/tmp/file");
    machine.taskLauncher.addProgram(kUnzip, NSData());
    EXPECT_EQ(unzipFileAtPath("/tmp/a.zip", "/tmp/file/out"), std::nullopt);
    EXPECT_EQ(machine.taskLauncher.requests().size(), 1U);
}

TEST_F(NSTaskZipTest, URLsStandForTheirPaths) {
    machine.taskLauncher.addProgram(kUnzip, NSData());
    EXPECT_EQ(unzipFileAtURL(NSURL::fileURLWithPath("/tmp/a b.zip"), NSURL::fileURLWithPath("/tmp/out", true)),
              std::vector<NSString>());
    const auto requests = machine.taskLauncher.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].arguments, (std::vector<NSString>{"-q", "/tmp/a b.zip"}));
    EXPECT_EQ(requests[0].currentDirectoryPath, "/tmp/out");
}

} // namespace
} // namespace qk
