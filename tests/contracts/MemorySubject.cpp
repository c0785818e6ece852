// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/MemorySubject.h"

#include "QKFoundation/platform/memory/Machine.h"

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
    machine.fileManager.addPropertyList("/System/Library/CoreServices/SystemVersion.plist",
                                        NSDictionary{{"ProductName", "Example Linux"},
                                                     {"ProductVersion", "22.04"},
                                                     {"ProductBuildVersion", "20240131.2"}});
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
    [[nodiscard]] NSString emptyFolder() override { return "/tmp/work"; }
    void makeFile(const NSString& path) override { described_.fileManager.addFile(path); }
    [[nodiscard]] Commands commands() override {
        return {program("/bin/hello"), program("/bin/true"),   program("/bin/arguments"),
                program("/bin/three"), program("/bin/killed"), program("/bin/missing")};
    }

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
};

} // namespace

std::unique_ptr<Subject> makeMemorySubject() {
    return std::make_unique<MemorySubject>();
}

} // namespace qk::tests
