// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Observe.h"

#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/runtime/QKSignalHandler.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/PathText.h"
#include "tools/qkinfo/Quantities.h"

#include <csignal>
#include <memory>
#include <stdexcept>
#include <utility>

namespace qk::info {

namespace {

std::string pathOf(const Value& folder) {
    const auto* url = folder.as<NSURL>();
    const auto path = url != nullptr ? url->path() : std::nullopt;
    return path.has_value() ? wellFormedUTF8(*path) : std::string();
}

/// Hands on what the library tells, and remembers whether it gave up.
class Listener final : public FileSystemObserverDelegate {
public:
    Listener(std::function<bool(const Changes&)> changed, std::shared_ptr<platform::RunLoop> loop)
        : changed_(std::move(changed)), loop_(std::move(loop)) {}

    void fileSystemObserver(FileSystemObserver& observer, const NSArray& didObserveChangeInFiles,
                            const NSArray& atURLs) override {
        Changes changes;
        for (std::size_t index = 0; index < didObserveChangeInFiles.count(); ++index) {
            changes.names.push_back(wellFormedUTF8(didObserveChangeInFiles[index].description()));
            changes.folders.push_back(pathOf(atURLs[index]));
        }
        if (!changed_(changes)) {
            observer.stopObserving();
            end_ = ObserveEnd::Ended;
            loop_->stop();
        }
    }

    void fileSystemObserverDidTimeout(FileSystemObserver& /*observer*/) override {
        end_ = ObserveEnd::TimedOut;
        loop_->stop();
    }

    [[nodiscard]] ObserveEnd end() const { return end_; }

private:
    std::function<bool(const Changes&)> changed_;
    std::shared_ptr<platform::RunLoop> loop_;
    ObserveEnd end_ = ObserveEnd::Interrupted;
};

NSArray pathsOf(const ObserveOptions& options) {
    std::vector<Value> paths;
    for (const std::string& path : options.paths) {
        paths.emplace_back(absolutePathString(path));
        if (!platform::services()->fileManager->fileExistsAtPath(*paths.back().as<NSString>())) {
            throw std::runtime_error("there is no file or folder \"" + path + "\"");
        }
    }
    return NSArray(std::move(paths));
}

std::shared_ptr<FileSystemObserver> observerOf(const ObserveOptions& options) {
    std::vector<Value> names;
    for (const std::string& name : options.names) {
        names.emplace_back(pathString(name));
    }
    const std::chrono::duration<double> seconds = options.timeout.value_or(std::chrono::milliseconds(0));
    return FileSystemObserver::initWithFilesToLookFor(
        NSArray(std::move(names)), options.itemType,
        options.changes != 0 ? options.changes : FileSystemObserverChangeAny, seconds.count());
}

} // namespace

ObserveEnd observe(const ObserveOptions& options, const std::function<void()>& isWatching,
                   const std::function<bool(const Changes& changes)>& changed) {
    const auto loop = platform::services()->dispatch->mainRunLoop();
    const NSArray paths = pathsOf(options);
    const auto listener = std::make_shared<Listener>(changed, loop);
    const auto interrupt = QKSignalHandler::initWithSignal(SIGINT, [loop] { loop->stop(); });
    const auto observer = observerOf(options);
    observer->setDelegate(listener);
    observer->startObservingAtPaths(paths);
    if (observer->stream() == nullptr) {
        throw std::runtime_error("the system lets nobody watch files");
    }
    isWatching();
    loop->run();
    observer->stopObserving();
    return listener->end();
}

std::string changeLines(const Changes& changes, Moment time) {
    std::string text;
    const std::string prefix = localTimeText(time) + "  ";
    for (std::size_t index = 0; index < changes.names.size(); ++index) {
        text += prefix + displayBytes(displayExact(changes.names[index])) + "  " +
                displayBytes(displayExact(changes.folders[index])) + "\n";
    }
    return text;
}

std::string changesJsonLine(const Changes& changes, Moment time) {
    List list{{}, "", "change", "changes"};
    for (std::size_t index = 0; index < changes.names.size(); ++index) {
        list.records.push_back(
            {{"name", "Name", Path{changes.names[index]}}, {"folder", "Folder", Path{changes.folders[index]}}});
    }
    return renderJsonLine(time, std::vector{Section{"changes", "Changes", std::move(list)}});
}

} // namespace qk::info
