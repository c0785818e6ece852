// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/contracts/ChangingFiles.h"

namespace qk::tests {
namespace {

using namespace platform;

class FilesInMemory final : public ChangingFiles {
public:
    [[nodiscard]] FSEvents& events() override { return machine_.fsEvents; }
    [[nodiscard]] std::shared_ptr<RunLoop> runLoop() override { return machine_.dispatch.mainRunLoop(); }
    [[nodiscard]] std::string path(const std::string& name) override {
        if (name.starts_with("../")) {
            return "/tests/" + name.substr(3);
        }
        return name.empty() ? "/tests/folder" : "/tests/folder/" + name;
    }
    void makeFolder(const std::string& name) override {
        emit(name, kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
    }
    void makeFile(const std::string& name) override {
        emit(name, kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsFile);
        write(name);
    }
    void write(const std::string& name) override {
        emit(name, kFSEventStreamEventFlagItemModified | kFSEventStreamEventFlagItemIsFile);
    }
    void removeFile(const std::string& name) override {
        emit(name, kFSEventStreamEventFlagItemRemoved | kFSEventStreamEventFlagItemIsFile);
    }
    void removeFolder(const std::string& name) override {
        emit(name, kFSEventStreamEventFlagItemRemoved | kFSEventStreamEventFlagItemIsDir);
    }
    void move(const std::string& from, const std::string& to, bool isFolder) override {
        const auto kind = isFolder ? kFSEventStreamEventFlagItemIsDir : kFSEventStreamEventFlagItemIsFile;
        emit(from, kFSEventStreamEventFlagItemRenamed | kind);
        emit(to, kFSEventStreamEventFlagItemRenamed | kind);
    }
    bool runUntil(const std::function<bool()>& isDone) override {
        constexpr double kStep = 0.25;
        constexpr int kSteps = 100;
        for (int step = 0; step < kSteps && !isDone(); ++step) {
            machine_.dispatch.advance(kStep);
        }
        return isDone();
    }

private:
    void emit(const std::string& name, FSEventStreamEventFlags flags) {
        machine_.fsEvents.emit(NSString::fromUTF8(path(name)).value(), flags);
    }

    memory::Machine machine_;
};

} // namespace

std::unique_ptr<ChangingFiles> makeFilesInMemory() {
    return std::make_unique<FilesInMemory>();
}

} // namespace qk::tests
