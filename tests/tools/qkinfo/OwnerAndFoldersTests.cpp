// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tools/qkinfo/Commands.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/TextRenderer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace qk::info {

namespace {

using nlohmann::json;

class OwnerAndFolders : public testing::Test {
protected:
    [[nodiscard]] static Section section(std::string_view name) {
        return sectionOf(*std::ranges::find(commands(), name, &Command::name), {});
    }
    [[nodiscard]] static json jsonOf(std::string_view name) {
        return json::parse(renderJson(std::vector{section(name)}))[std::string(name)];
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

} // namespace

TEST_F(OwnerAndFolders, NobodyAtTheConsoleIsNotReported) {
    machine.users.setUserID(0);
    EXPECT_EQ(jsonOf("owner"), json::parse(R"({"user_id": 0, "root": true, "console_user_id": null,
        "console_user": true, "admin_group": false, "build_server": false})"));
}

TEST_F(OwnerAndFolders, OwnerTellsWhatTheMachineTells) {
    machine.users.setUserID(501);
    machine.users.addPasswordEntry({"_xcs", 501, "/Users/x"});
    machine.users.addGroup({"admin", {"_xcs"}});
    machine.users.setConsoleUser(platform::ConsoleUser{"anna", 502});
    machine.host.setUserName(NSString("_xcs"));
    EXPECT_EQ(jsonOf("owner"), json::parse(R"({"user_id": 501, "root": false, "console_user_id": 502,
        "console_user": false, "admin_group": true, "build_server": true})"));
    EXPECT_EQ(renderText(std::vector{section("owner")}, {}), "Owner\n"
                                                             "  User id           501\n"
                                                             "  Is root           no\n"
                                                             "  Console user id   502\n"
                                                             "  Is console user   no\n"
                                                             "  In group \"admin\"  yes\n"
                                                             "  Is build server   yes\n");
}

TEST_F(OwnerAndFolders, ProgramOfAnUnknownPlaceHasNoFoldersOfItsOwn) {
    EXPECT_EQ(jsonOf("folders"), json::parse(R"({"application_support": null, "system_application_support": null,
        "caches": null, "downloads": "/Downloads", "main_bundle": null, "app_bundle": null})"));
}

TEST_F(OwnerAndFolders, FoldersTellWhatTheMachineTells) {
    using enum NSSearchPathDirectory;
    using enum NSSearchPathDomainMask;
    machine.users.setUserID(501);
    machine.users.addPasswordEntry({"anna", 501, "/Users/anna"});
    machine.fileManager.addDirectory("/A/Helper.app/Contents/MacOS");
    machine.processInfo.setMainBundlePath("/A/Helper.app/Contents/MacOS");
    machine.fileManager.setSearchPaths(NSApplicationSupportDirectory, NSSystemDomainMask, {"/Library/Support"});
    machine.fileManager.setSearchPaths(NSCachesDirectory, NSUserDomainMask, {"~/C"});
    EXPECT_EQ(jsonOf("folders"), json::parse(R"({
        "application_support": "/Users/anna/Library/Application Support/MacOS",
        "system_application_support": "/Library/Support/MacOS", "caches": "/Users/anna/C/MacOS",
        "downloads": "/Users/anna/Downloads", "main_bundle": "/A/Helper.app/Contents/MacOS",
        "app_bundle": "/A/Helper.app"})"));
}

} // namespace qk::info
