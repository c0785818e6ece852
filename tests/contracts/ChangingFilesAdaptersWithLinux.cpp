// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFSEvents.h"
#include "QKFoundation/platform/linux/LinuxFileEventWatcher.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include "tests/contracts/ChangingFiles.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/linux/Waiting.h"

#include <filesystem>
#include <fstream>

namespace qk::tests {
namespace {

using namespace platform;

class LinuxFiles final : public ChangingFiles {
public:
    explicit LinuxFiles(LinuxFSEvents::Means means) : events_(means) { makeFolder(""); }

    [[nodiscard]] FSEvents& events() override { return events_; }
    [[nodiscard]] std::shared_ptr<RunLoop> runLoop() override { return loop_; }
    [[nodiscard]] std::string path(const std::string& name) override {
        const std::string folder = std::filesystem::canonical(folder_.path()).string();
        if (name.starts_with("../")) {
            return folder + "/" + name.substr(3);
        }
        return name.empty() ? folder + "/watched" : folder + "/watched/" + name;
    }
    void makeFolder(const std::string& name) override { std::filesystem::create_directory(path(name)); }
    void makeFile(const std::string& name) override { write(name); }
    void write(const std::string& name) override { std::ofstream(path(name), std::ios::app) << "content"; }
    void removeFile(const std::string& name) override { std::filesystem::remove(path(name)); }
    void removeFolder(const std::string& name) override { std::filesystem::remove(path(name)); }
    void move(const std::string& from, const std::string& to, bool /*isFolder*/) override {
        std::filesystem::rename(path(from), path(to));
    }
    bool runUntil(const std::function<bool()>& isDone) override { return tests::runUntil(*loop_, isDone); }

private:
    TemporaryFolder folder_;
    LinuxFSEvents events_;
    std::shared_ptr<LinuxRunLoop> loop_ = LinuxRunLoop::make();
};

std::unique_ptr<ChangingFiles> makeWithInotify() {
    return std::make_unique<LinuxFiles>(LinuxFSEvents::Means::Inotify);
}

std::unique_ptr<ChangingFiles> makeWithFanotify() {
    auto files = std::make_unique<LinuxFiles>(LinuxFSEvents::Means::Fanotify);
    const bool isAllowed = watchWithFanotify(LinuxRunLoop::make(), {files->path("")}, [](auto, auto) {}) != nullptr;
    return isAllowed ? std::move(files) : nullptr;
}

} // namespace

std::vector<ChangingFilesAdapter> changingFilesAdapters() {
    return {{"Memory", makeFilesInMemory}, {"Inotify", makeWithInotify}, {"Fanotify", makeWithFanotify}};
}

} // namespace qk::tests
