// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/MemorySubject.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include <cstdint>

namespace qk::tests {
namespace {

using platform::TaskExit;
using platform::TaskRequest;
using platform::TaskStream;
using platform::memory::Machine;
using qk::NSOperatingSystemVersion;

constexpr int kSignalKill = 9;

void describe(Machine& machine) {
    machine.kernel.setSysctl("hw.model", "Example Book 14 Gen 3");
    machine.kernel.setSysctl("machdep.cpu.brand_string", "Example 32-bit Processor @ 4.70GHz");
    machine.kernel.setSysctl("hw.cpu64bit_capable", std::int32_t{0});
    machine.kernel.setSysctl("hw.physicalcpu", std::uint32_t{3});
    machine.kernel.setSysctl("hw.logicalcpu", std::uint32_t{5});
    machine.kernel.setSysctl("hw.cpufrequency_max", std::uint64_t{5'200'000'000});
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{16252928} * 1024);
    machine.kernel.setSysctl("kern.osversion", "20240131.2");
    machine.kernel.setSysctl({platform::kCtlKern, platform::kKernVersion}, "Example version 6.5");
    machine.kernel.setBootTime(1795220992);
    machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{22, 4, 0});
    machine.processInfo.setGestalt(platform::GestaltSelector::gestaltSystemVersionMajor, 22);
    machine.processInfo.setGestalt(platform::GestaltSelector::gestaltSystemVersionMinor, 4);
    machine.processInfo.setGestalt(platform::GestaltSelector::gestaltSystemVersionBugFix, 0);
    machine.host.setUserName(NSString("anna"));
    machine.host.setLocalizedName(NSString("Anna’s laptop"));
    machine.systemConfiguration.setComputerName(NSString("laptop"));
    machine.users.setConsoleUser(platform::ConsoleUser{"anna", 1000});
    machine.fileManager.addPropertyList("/System/Library/CoreServices/SystemVersion.plist",
                                        NSDictionary{{"ProductName", "Example Linux"},
                                                     {"ProductVersion", "22.04"},
                                                     {"ProductBuildVersion", "20240131.2"}});
}

void describeLoad(Machine& machine) {
    constexpr std::uint32_t kPage = 4096;
    constexpr auto pages = [](std::uint32_t kilobytes) { return kilobytes * 1024 / kPage; };
    machine.kernel.setSysctl("hw.pagesize", std::uint64_t{kPage});
    machine.hostStatistics.addProcessorTicks({{1, 2, 3, 4}, {10, 20, 30, 40}}, {0, 2});
    machine.hostStatistics.addMemoryStatistics({.free_count = pages(640),
                                                .wire_count = pages(1280),
                                                .compressor_page_count = pages(1920),
                                                .external_page_count = pages(2560),
                                                .internal_page_count = pages(3200),
                                                .swapouts = 77});
    using namespace qk::platform;
    machine.kernel.setProcesses(std::vector{memory::makeProcess(1, SSLEEP, "init"),
                                            memory::makeProcess(20, SSTOP, ") R ("),
                                            memory::makeProcess(300, SZOMB, "gone")});
    machine.processTable.setPath(1, "/sbin/init");
    machine.processTable.setPath(20, "/opt/a longer name");
}

void describeVolumes(Machine& machine) {
    using namespace qk::platform;
    static constexpr std::uint64_t kCapacity = 1'000'000;
    const auto disk = [](const NSString& name, bool isInternal, bool isRemovable) {
        return NSDictionary{{NSURLVolumeNameKey, name},
                            {NSURLVolumeIsInternalKey, isInternal},
                            {NSURLVolumeIsEjectableKey, false},
                            {NSURLVolumeIsRemovableKey, isRemovable},
                            {NSURLVolumeTotalCapacityKey, kCapacity},
                            {NSURLVolumeAvailableCapacityKey, kCapacity / 2}};
    };
    machine.fileManager.addVolume("/", disk("System", true, false));
    machine.fileManager.addVolume("/media/stick", disk("stick", false, true));
    const NSURL server = NSURL::URLWithString("nfs://server/export").value();
    machine.fileManager.addVolume("/net", NSDictionary{{NSURLVolumeNameKey, "net"},
                                                       {NSURLVolumeIsInternalKey, false},
                                                       {NSURLVolumeIsEjectableKey, false},
                                                       {NSURLVolumeIsRemovableKey, false},
                                                       {NSURLVolumeURLForRemountingKey, server}});
}

void describePlace(Machine& machine) {
    const NSTimeZone zone = NSTimeZone::timeZoneWithRule("Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3").value();
    machine.locale.setPreferredLanguages({"de-AT", "zh-Hant", "en"});
    machine.timeZones.addTimeZone(zone);
    machine.timeZones.setSystemTimeZone(zone);
    machine.uniformTypes.declareType("public.png", {"public.image"});
    machine.uniformTypes.declareType("public.image", {"public.data", "public.content"});
    machine.uniformTypes.declareType("public.data", {"public.item"});
    machine.launchServices.setStatus(platform::LaunchServices::noErr);
}

TaskExit printingArguments(const TaskRequest& request) {
    std::string output;
    for (const NSString& argument : request.arguments) {
        output += "[" + argument.utf8Lossy() + "]";
    }
    return {0, false, request.standardOutput == TaskStream::Collect ? NSData(output) : NSData()};
}

class MemorySubject final : public Subject {
public:
    MemorySubject() {
        describe(described_);
        describeLoad(described_);
        describeVolumes(described_);
        describePlace(described_);
        networked_.network.addService({.name = "Office", .bsdName = "eth0"});
        networked_.network.addService({.name = "Home", .enabled = false, .bsdName = "eth0"});
        networked_.network.addService({.bsdName = "eth1", .ipv4Addresses = {}, .ipv6Addresses = {}});
        described_.fileManager.addDirectory("/tmp/work");
        auto& launcher = described_.taskLauncher;
        launcher.addProgram("/bin/hello", NSData("hello"));
        launcher.addProgram("/bin/true", NSData());
        launcher.addProgram("/bin/three", NSData(), 3);
        launcher.addProgram("/bin/arguments", printingArguments);
        launcher.addProgram("/bin/killed", [](const TaskRequest& /*request*/) {
            return TaskExit{kSignalKill, true, NSData()};
        });
    }

    [[nodiscard]] platform::Services silent() override { return *silent_.services(); }
    [[nodiscard]] platform::Services described() override { return *described_.services(); }
    [[nodiscard]] platform::Services networked() override { return *networked_.services(); }
    [[nodiscard]] NSString emptyFolder() override { return "/tmp/work"; }
    void makeFile(const NSString& path) override { described_.fileManager.addFile(path); }
    void makeSymbolicLink(const NSString& path, const NSString& destination) override {
        described_.fileManager.addSymbolicLink(path, destination);
    }
    [[nodiscard]] Commands commands() override {
        return {program("/bin/hello"), program("/bin/true"),   program("/bin/arguments"),
                program("/bin/three"), program("/bin/killed"), program("/bin/missing")};
    }
    void deliverSignal(std::int32_t signal) override { silent_.signalSources.deliver(signal); }

private:
    static TaskRequest program(const NSString& path) {
        TaskRequest request;
        request.launchPath = path;
        request.standardOutput = TaskStream::Collect;
        request.standardError = TaskStream::Discard;
        return request;
    }

    Machine silent_;
    Machine described_;
    Machine networked_;
};

} // namespace

std::unique_ptr<Subject> makeMemorySubject() {
    return std::make_unique<MemorySubject>();
}

} // namespace qk::tests
