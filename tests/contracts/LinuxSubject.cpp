// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/LinuxSubject.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/linux/LinuxServices.h"

#include "tests/platform/linux/TemporaryFolder.h"

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
        root_.write("proc/stat", "btime 1795220992\n");
        root_.write("proc/version", "Example version 6.5\n");
        std::filesystem::create_directories(root_.path("tmp/work"));
    }

    [[nodiscard]] platform::Services silent() override {
        return platform::makeLinuxServices(LinuxRoot(root_.path("nothing-here")));
    }
    [[nodiscard]] platform::Services described() override {
        return platform::makeLinuxServices(LinuxRoot(root_.path()));
    }
    [[nodiscard]] NSString emptyFolder() override { return "/tmp/work"; }
    void makeFile(const NSString& path) override {
        root_.write(platform::fileSystemRepresentation(path).value().substr(1), "content");
    }
    [[nodiscard]] Commands commands() override {
        return {shell("printf hello"),  shell(":"), shell("printf '[%s]' \"$@\"", {"sh"}), shell("exit 3"),
                shell("kill -KILL $$"), missing()};
    }

private:
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
