// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxMetadataIndex.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/MetadataGatherer.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

constexpr double kLatency = 0.5;
constexpr double kPollInterval = 60;
constexpr std::size_t kMostChanges = 16'384; // with more, everything is looked through again

struct StreamCloser {
    void operator()(FSEventStreamRef stream) const {
        stream->stop();
        stream->invalidate();
        stream->release();
    }
};
using Stream = std::unique_ptr<FSEventStream, StreamCloser>;

// A search on the thread that began it. Only the run owns it: background tasks know it weakly, by way of the run loop.
class Search : public std::enable_shared_from_this<Search> {
public:
    Search(std::shared_ptr<Dispatch> dispatch, std::shared_ptr<FSEvents> events,
           std::shared_ptr<MetadataGatherer> gatherer, MetadataListener listener)
        : dispatch_(std::move(dispatch)),
          events_(std::move(events)),
          runLoop_(dispatch_->currentRunLoop()),
          gatherer_(std::move(gatherer)),
          listener_(std::move(listener)) {}

    void start(const std::string& recentlyUsedList) {
        // Before the walk: what changes meanwhile is kept until the walk is over.
        scopesStream_ = watch(gatherer_->scopes().folders(), &Search::scopesChanged);
        listStream_ = watch({recentlyUsedList}, &Search::listChanged);
        if (scopesStream_ == nullptr) {
            pollTimer_ = runLoop_->scheduleTimer(kPollInterval, true, [this] {
                changes_.isEverything = true;
                proceed();
            });
        }
        isBusy_ = true;
        dispatch_->asyncOnBackgroundQueue([gatherer = gatherer_, loop = runLoop_, self = weak_from_this()] {
            const MetadataGatherer::Progress progress = [&](std::size_t examined) {
                loop->perform([self, examined] { withSearch(self, &Search::progressed, examined); });
            };
            answer(*gatherer, *loop, self, gatherer->gather(progress));
        });
    }

    void end() {
        hasEnded_ = true;
        gatherer_->cancel();
        scopesStream_ = nullptr;
        listStream_ = nullptr;
        pollTimer_ = nullptr;
        quietTimer_ = nullptr;
    }

private:
    using Results = std::optional<MetadataResults>;

    template <typename... Parameters, typename... Arguments>
    static void withSearch(const std::weak_ptr<Search>& self, void (Search::*call)(Parameters...),
                           Arguments&&... arguments) {
        if (const std::shared_ptr<Search> search = self.lock(); search != nullptr && !search->hasEnded_) {
            ((*search).*call)(std::forward<Arguments>(arguments)...);
        }
    }

    // On a background thread: the results go to the run loop.
    static void answer(const MetadataGatherer& gatherer, RunLoop& loop, const std::weak_ptr<Search>& self,
                       Results results) {
        if (!gatherer.isCancelled()) {
            loop.perform([self, results = std::move(results)] { withSearch(self, &Search::finished, results); });
        }
    }

    Stream watch(const std::vector<std::string>& paths, FSEventStreamCallback callback) {
        std::vector<NSString> texts;
        texts.reserve(paths.size());
        for (const std::string& path : paths) {
            texts.push_back(stringWithFileSystemRepresentation(path));
        }
        const FSEventStreamContext context{.version = 0, .info = this};
        FSEventStreamRef made =
            events_->streamCreate(callback, context, NSArray(texts), kFSEventStreamEventIdSinceNow, kLatency,
                                  kFSEventStreamCreateFlagUseCFTypes | kFSEventStreamCreateFlagFileEvents);
        if (made == nullptr) {
            return nullptr;
        }
        Stream stream(made);
        stream->scheduleWithRunLoop(runLoop_);
        return stream->start() ? std::move(stream) : nullptr;
    }

    static void scopesChanged(FSEventStreamRef /*stream*/, void* info, std::size_t numEvents, const NSArray& eventPaths,
                              std::span<const FSEventStreamEventFlags> eventFlags,
                              std::span<const FSEventStreamEventId> /*eventIds*/) {
        auto& self = *static_cast<Search*>(info);
        for (std::size_t index = 0; index < numEvents; ++index) {
            if (const auto* path = eventPaths[index].as<NSString>(); path != nullptr) {
                self.note(fileSystemRepresentation(*path).value_or(""), eventFlags[index]);
            }
        }
        self.proceed();
    }

    static void listChanged(FSEventStreamRef /*stream*/, void* info, std::size_t /*numEvents*/,
                            const NSArray& /*eventPaths*/, std::span<const FSEventStreamEventFlags> /*eventFlags*/,
                            std::span<const FSEventStreamEventId> /*eventIds*/) {
        auto& self = *static_cast<Search*>(info);
        self.changes_.hasUsedDates = true;
        self.proceed();
    }

    void note(std::string path, FSEventStreamEventFlags flags) {
        if (changes_.isEverything || !gatherer_->isConcernedBy(path)) {
            return;
        }
        changes_.paths[std::move(path)] |= flags;
        if (changes_.paths.size() > kMostChanges) {
            changes_.isEverything = true;
            changes_.paths.clear();
        }
    }

    // Looks at what has changed, unless that is being done or it is too early to tell something new.
    void proceed() {
        if (isBusy_ || quietTimer_ != nullptr || changes_.isEmpty()) {
            return;
        }
        isBusy_ = true;
        dispatch_->asyncOnBackgroundQueue(
            [gatherer = gatherer_, loop = runLoop_, self = weak_from_this(), changes = std::exchange(changes_, {})] {
                answer(*gatherer, *loop, self, gatherer->update(changes));
            });
    }

    void progressed(std::size_t examined) {
        if (listener_.progress != nullptr) {
            listener_.progress(examined);
        }
    }

    void finished(const Results& results) {
        isBusy_ = false;
        if (results.has_value()) {
            quietTimer_ = runLoop_->scheduleTimer(kLatency, false, [this] {
                quietTimer_ = nullptr;
                proceed();
            });
            if (listener_.deliver != nullptr) {
                listener_.deliver(*results); // may end this
            }
        }
        if (!hasEnded_) {
            proceed();
        }
    }

    const std::shared_ptr<Dispatch> dispatch_;
    const std::shared_ptr<FSEvents> events_;
    const std::shared_ptr<RunLoop> runLoop_;
    const std::shared_ptr<MetadataGatherer> gatherer_;
    const MetadataListener listener_;
    bool hasEnded_ = false;
    bool isBusy_ = false; // a background task has the gatherer
    MetadataChanges changes_;
    Stream scopesStream_;
    Stream listStream_;
    std::unique_ptr<RunLoopSource> pollTimer_;
    std::unique_ptr<RunLoopSource> quietTimer_;
};

class Run final : public MetadataSearchRun {
public:
    explicit Run(std::shared_ptr<Search> search) : search_(std::move(search)) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() override { search_->end(); }

private:
    std::shared_ptr<Search> search_;
};

} // namespace

std::unique_ptr<MetadataSearchRun> LinuxMetadataIndex::begin(const MetadataSearch& search, MetadataListener listener) {
    MetadataPlaces places;
    if (!root_.isHost()) {
        std::error_code notThere; // then nothing is found either
        places.root = std::filesystem::canonical(root_.path("/"), notThere).string();
    }
    for (const NSString& scope : search.scopes) {
        if (const std::optional<std::string> path = fileSystemRepresentation(scope); path.has_value()) {
            places.scopes.push_back(root_.path(*path));
        }
    }
    if (search.scopes.empty()) {
        places.scopes.push_back(root_.path(folders_.home()));
    }
    const std::vector<std::string> support =
        folders_.paths(NSSearchPathDirectory::NSApplicationSupportDirectory, NSSearchPathDomainMask::NSUserDomainMask);
    const std::string list = support.empty() ? "" : root_.path(support.front()) + "/recently-used.xbel";
    places.recentlyUsedList = list;
    const auto running = std::make_shared<Search>(
        dispatch_, events_, std::make_shared<MetadataGatherer>(search, std::move(places), dispatch_, types_),
        std::move(listener));
    auto run = std::make_unique<Run>(running);
    running->start(list);
    return run;
}

} // namespace qk::platform
