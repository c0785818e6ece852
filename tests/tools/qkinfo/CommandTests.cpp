// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/NSException.h"

#include "tests/tools/qkinfo/ManualClock.h"
#include "tools/qkinfo/Commands.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/TextRenderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

namespace qk::info {

namespace {

using nlohmann::json;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

const NSString kUpdateTool = "/usr/sbin/softwareupdate";

class Commands : public testing::Test {
protected:
    Commands() {
        std::string name = (std::filesystem::temp_directory_path() / "qkinfo-XXXXXX").string();
        root_ = mkdtemp(name.data());
    }
    ~Commands() override { std::filesystem::remove_all(root_); }

    static const Command& command(std::string_view name) {
        return *std::ranges::find(commands(), name, &Command::name);
    }

    [[nodiscard]] Section section(std::string_view name) const { return sectionOf(command(name), surroundings()); }

    [[nodiscard]] json jsonOf(std::string_view name) const {
        return json::parse(renderJson(std::vector{section(name)}))[std::string(name)];
    }

    [[nodiscard]] std::string textOf(std::string_view name) const { return renderText(std::vector{section(name)}, {}); }

    [[nodiscard]] Surroundings surroundings() const { return {root_, &clock_}; }

    void setListing(std::string_view text) { machine.taskLauncher.addProgram(kUpdateTool, NSData(text)); }

    Machine machine;
    std::filesystem::path root_;

private:
    mutable ManualClock clock_;
    ScopedMachine installed_{machine};
};

} // namespace

TEST_F(Commands, AMachineThatTellsNothingHasNoFacts) {
    for (const std::string_view name : {"os", "hardware"}) {
        const json facts = jsonOf(name);
        for (const auto& [key, value] : facts.items()) {
            if (key != "processor_64bit") {
                EXPECT_TRUE(value.is_null()) << key << " is " << value;
            }
        }
        const std::string text = textOf(name);
        EXPECT_THAT(text, testing::Not(testing::ContainsRegex(" 0[ \n]")));
        EXPECT_THAT(text, testing::Not(testing::ContainsRegex("  \n")));
    }
}

TEST_F(Commands, OperatingSystemTellsWhatTheMachineTells) {
    std::filesystem::create_directories(root_ / "etc");
    std::ofstream(root_ / "etc/os-release") << "PRETTY_NAME=\"Example OS 10 LTS\"\n";
    machine.fileManager.addPropertyList("/System/Library/CoreServices/SystemVersion.plist",
                                        NSDictionary{{"ProductName", "Example OS"}});
    machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{10, 12, 6});
    machine.kernel.setSysctl("kern.osversion", "16G29");
    machine.kernel.setSysctl(std::vector{platform::kCtlKern, platform::kKernVersion}, "Kernel 16.7 \n");
    machine.kernel.setBootTime(1'714'551'753, 999'999);
    machine.host.setUserName(NSString("ada"));
    machine.systemConfiguration.setComputerName(NSString("engine"));
    const json expected = json::parse(R"json({
        "product_name": "Example OS", "version": "10.12.6", "distribution": "Example OS 10 LTS",
        "code_name": "Sierra", "description": "Example OS Sierra 10.12.6 (16G29)", "build": "16G29",
        "kernel_version": "Kernel 16.7", "computer_name": "engine", "user_name": "ada",
        "boot_time": "2024-05-01T08:22:33Z"})json");
    EXPECT_EQ(jsonOf("os"), expected);
}

TEST_F(Commands, AVersionBeyondTheCodeNamesHasNone) {
    machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{22, 44, 0});
    EXPECT_EQ(jsonOf("os")["version"], "22.44.0");
    EXPECT_TRUE(jsonOf("os")["code_name"].is_null());
}

TEST_F(Commands, HardwareTellsWhatTheMachineTells) {
    machine.kernel.setSysctl("hw.model", "Example 9000\x1b[31m");
    machine.kernel.setSysctl("machdep.cpu.brand_string", "Example CPU");
    machine.kernel.setSysctl("hw.physicalcpu", std::uint32_t{4});
    machine.kernel.setSysctl("hw.logicalcpu", std::uint32_t{8});
    machine.kernel.setSysctl("hw.cpufrequency_max", std::uint64_t{2'599'999'999});
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{25'769'803'776});
    machine.kernel.setSysctl("hw.pagesize", std::uint64_t{4096});
    machine.kernel.setSysctl("hw.cpu64bit_capable", std::uint32_t{1});
    const json expected = json::parse(R"({
        "model": "Example 9000\u001b[31m", "processor": "Example CPU", "physical_processors": 4,
        "logical_processors": 8, "max_frequency_mhz": 2599, "memory_bytes": 25769803776, "page_size_bytes": 4096,
        "processor_64bit": true})");
    EXPECT_EQ(jsonOf("hardware"), expected);
    EXPECT_EQ(textOf("hardware"), "Hardware\n"
                                  "  Model                Example 9000\\x1B[31m\n"
                                  "  Processor            Example CPU\n"
                                  "  Physical processors  4\n"
                                  "  Logical processors   8\n"
                                  "  Maximum frequency    2.60 GHz (2599 MHz)\n"
                                  "  Memory               24.0 GiB (25769803776 bytes)\n"
                                  "  Page size            4.0 KiB (4096 bytes)\n"
                                  "  64-bit processor     yes\n");
}

TEST_F(Commands, AFrequencyBelowOneMegahertzIsNotReported) {
    machine.kernel.setSysctl("hw.cpufrequency_max", std::uint64_t{999'999});
    EXPECT_TRUE(jsonOf("hardware")["max_frequency_mhz"].is_null());
}

TEST_F(Commands, AnEmptyModelIsNotReported) {
    machine.kernel.setSysctl("hw.model", "");
    EXPECT_THAT(textOf("hardware"), testing::HasSubstr("Model                not reported by this system\n"));
}

TEST_F(Commands, WithoutAnUpdateToolTheCommandFails) {
    EXPECT_THROW(static_cast<void>(section("updates")), NSException);
}

TEST_F(Commands, WithoutAnUpdateToolTheReportGoesOn) {
    const Section section = sectionForReport(command("updates"), surroundings());
    EXPECT_EQ(section.key, "updates");
    EXPECT_FALSE(section.body.has_value());
}

TEST_F(Commands, AnUnreadableListingIsNotReported) {
    setListing("something else\n");
    EXPECT_TRUE(jsonOf("updates").is_null());
    EXPECT_EQ(textOf("updates"), "Updates\n  not reported by this system\n");
}

TEST_F(Commands, NoUpdatesMeansUpToDate) {
    setListing("No new software available.\n");
    EXPECT_EQ(jsonOf("updates"), json::array());
    EXPECT_EQ(textOf("updates"), "Updates\n  Up to date.\n");
}

TEST_F(Commands, UpdatesAreListedInOrder) {
    setListing("Updates:\n"
               "   * ExampleTool-2.1\n\tExample Tool (2.1), 20480K [recommended] [restart]\n"
               "   * other-tool-1.0\n\tAnother (1.0), 12K\n");
    const json expected = json::parse(R"([
        {"name": "ExampleTool", "version": "2.1", "description": "Example Tool", "size": "20480K",
         "recommended": true, "restart": true},
        {"name": "other-tool", "version": "1.0", "description": "Another", "size": "12K",
         "recommended": false, "restart": false}])");
    EXPECT_EQ(jsonOf("updates"), expected);
    EXPECT_EQ(textOf("updates"), "Updates\n"
                                 "  Name         Version  Size    Flags\n"
                                 "  ExampleTool  2.1      20480K  recommended, restart\n"
                                 "  other-tool   1.0      12K     -\n"
                                 "  2 updates.\n");
}

TEST_F(Commands, VersionsAreWrittenWithUsualHyphens) {
    setListing("   * bash-5.2.15\u20112+b13\n\tbash (5.2.15\u20112+b13), 12K\n");
    EXPECT_EQ(jsonOf("updates").at(0).at("name"), "bash");
    EXPECT_EQ(jsonOf("updates").at(0).at("version"), "5.2.15-2+b13");
}

TEST_F(Commands, OnlyTheUpdatesAskTheTool) {
    static_cast<void>(section("os"));
    static_cast<void>(section("hardware"));
    EXPECT_TRUE(machine.taskLauncher.requests().empty());
}

TEST_F(Commands, TextAndJsonShowTheSameFacts) {
    setListing("No new software available.\n");
    machine.hostStatistics.addProcessorTicks({{1, 1, 1, 1}});
    machine.hostStatistics.addMemoryStatistics({});
    machine.kernel.setProcesses({});
    for (const Command& each : commands()) {
        const Section one = sectionOf(each, surroundings());
        const auto* facts = one.body.has_value() ? std::get_if<Facts>(&*one.body) : nullptr;
        if (facts == nullptr) {
            continue;
        }
        const std::string text = renderText(std::vector{one}, {});
        EXPECT_EQ(jsonOf(each.name).size(), facts->size()) << "two facts of " << each.name << " have one key";
        for (const Fact& fact : *facts) {
            EXPECT_TRUE(jsonOf(each.name).contains(std::string(fact.key)));
            EXPECT_THAT(text, testing::HasSubstr("\n  " + std::string(fact.label) + " "));
        }
    }
}

} // namespace qk::info
