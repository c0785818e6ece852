// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/LinuxSubject.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/linux/LinuxLaunchServices.h"
#include "QKFoundation/platform/linux/LinuxServices.h"

#include "tests/platform/linux/DescribedDisks.h"
#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/ZoneBytes.h"

#include <csignal>
#include <filesystem>
#include <fstream>

namespace qk::tests {
namespace {

using platform::LinuxRoot;
using platform::TaskRequest;
using platform::TaskStream;

constexpr const char* kLaptop = QK_FIXTURES_DIR "/linux/laptop";

class LinuxSubject final : public Subject {
public:
    LinuxSubject() {
        // The captured laptop, and what it leaves out.
        std::filesystem::copy(kLaptop, root_.path(), std::filesystem::copy_options::recursive);
        root_.write("etc/machine-info", "PRETTY_HOSTNAME=\"Anna’s laptop\"\n");
        root_.write("proc/sys/kernel/hostname", "laptop\n");
        root_.write("proc/stat", "cpu  11 44 22 33 0 0 0 0 0 0\ncpu0 1 4 2 3 0 0 0 0 0 0\n"
                                 "cpu2 10 40 20 30 0 0 0 0 0 0\nintr 0\nbtime 1795220992\n");
        root_.write("proc/version", "Example version 6.5\n");
        root_.write("run/systemd/seats/seat0", "IS_SEAT0=1\nACTIVE=2\nACTIVE_UID=1000\n");
        root_.write("run/systemd/sessions/2", "UID=1000\nUSER=anna\nCLASS=user\n");
        root_.write("run/systemd/users/1000", "NAME=anna\nSTATE=active\n");
        std::filesystem::create_directories(root_.path("tmp/work"));
        describeMemory();
        describeProcesses();
        describeVolumes();
        describePlace();
    }

    [[nodiscard]] platform::Services silent() override {
        return platform::makeLinuxServices(LinuxRoot(root_.path("nothing-here")));
    }
    [[nodiscard]] platform::Services described() override {
        platform::Services services = platform::makeLinuxServices(LinuxRoot(root_.path()));
        // On a machine that is only looked at nothing is opened, so it is told where the program for that lies.
        services.launchServices = std::make_shared<platform::LinuxLaunchServices>(
            services.taskLauncher, environment({{"PATH", root_.path("bin")}}));
        return services;
    }
    [[nodiscard]] platform::Services networked() override { return platform::makeLinuxServices(); }
    [[nodiscard]] NSString emptyFolder() override { return "/tmp/work"; }
    void makeFile(const NSString& path) override {
        root_.write(platform::fileSystemRepresentation(path).value().substr(1), "content");
    }
    void makeSymbolicLink(const NSString& path, const NSString& destination) override {
        std::filesystem::create_symlink(destination.utf8Lossy(), root_.path(path.utf8Lossy().substr(1)));
    }
    [[nodiscard]] Commands commands() override {
        return {shell("printf hello"),  shell(":"), shell("printf '[%s]' \"$@\"", {"sh"}), shell("exit 3"),
                shell("kill -KILL $$"), missing()};
    }
    void deliverSignal(std::int32_t signal) override { ::raise(signal); }

private:
    void describeMemory() {
        root_.write("proc/meminfo", "MemTotal: 16252928 kB\nMemFree: 640 kB\nCached: 2560 kB\nZswap: 1920 kB\n"
                                    "AnonPages: 3200 kB\nSUnreclaim: 1280 kB\n");
        root_.write("proc/vmstat", "nr_free_pages 1\npswpin 5\npswpout 77\npgfree 1\n");
    }
    void describeProcesses() {
        root_.write("proc/loadavg", "0.20 0.18 0.12 1/5 300\n");
        root_.write("proc/1/stat", "1 (init) S 0 1 1 0 -1 4194560 1 0\n");
        root_.write("proc/2/stat", "2 (kthreadd) S 0 0 0 0 -1 2129984 1 0\n");
        root_.write("proc/20/stat", "20 () R () T 1 20 20 0 -1 4194560 1 0\n");
        root_.write("proc/300/stat", "300 (gone) Z 1 300 300 0 -1 4228108 1 0\n");
        std::filesystem::create_symlink("/sbin/init", root_.path("proc/1/exe"));
        std::filesystem::create_symlink("/opt/a longer name (deleted)", root_.path("proc/20/exe"));
    }
    void describeVolumes() {
        addDisk(root_, "pci0000:00/ata1/block/sda", "8:0");
        addPartition(root_, "pci0000:00/ata1/block/sda/sda1", "8:1");
        addDisk(root_, "pci0000:00/usb1/1-1/block/sdb", "8:16", true);
        root_.write("run/udev/data/b8:1", "E:ID_FS_LABEL=System\n");
        root_.write("proc/self/mountinfo", mountLine("0:20", "/", "/proc", "proc", "proc") +
                                               mountLine("8:1", "/", "/", "ext4", "/dev/sda1") +
                                               mountLine("8:1", "/srv", "/var/www", "ext4", "/dev/sda1") +
                                               mountLine("8:16", "/", "/media/stick", "vfat", "/dev/sdb") +
                                               mountLine("0:60", "/", "/net", "nfs4", "server:/export"));
        std::filesystem::create_directories(root_.path("media/stick"));
    }
    void describePlace() {
        root_.write("etc/locale.conf", "LANG=en\nLANGUAGE=de_AT:zh_TW\n");
        root_.write("usr/share/zoneinfo/Europe/Berlin", ZoneBytes::berlin().version2());
        std::filesystem::create_symlink("/usr/share/zoneinfo/Europe/Berlin", root_.path("etc/localtime"));
        std::filesystem::permissions(root_.write("bin/xdg-open", "#!/bin/sh\n"), std::filesystem::perms::owner_all);
    }
    static TaskRequest shell(const NSString& script, const std::vector<NSString>& more = {}) {
        TaskRequest request;
        request.launchPath = "/bin/sh";
        request.arguments = {"-c", script};
        request.arguments.insert(request.arguments.end(), more.begin(), more.end());
        request.standardOutput = TaskStream::Collect;
        request.standardError = TaskStream::Discard;
        return request;
    }
    static TaskRequest missing() {
        TaskRequest request = shell(":");
        request.launchPath = "/nonexistent/program";
        return request;
    }

    TemporaryFolder root_;
};

} // namespace

std::unique_ptr<Subject> makeLinuxSubject() {
    return std::make_unique<LinuxSubject>();
}

} // namespace qk::tests
