// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryFSEvents.h"

#include "QKFoundation/platform/services/internal/EventStream.h"
#include "QKFoundation/platform/services/internal/JoinedEvents.h"

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

namespace qk::platform::memory {
namespace {

std::u16string_view withoutTrailingSlash(const NSString& path) {
    std::u16string_view units = path.units();
    while (units.size() > 1 && units.ends_with(u'/')) {
        units.remove_suffix(1);
    }
    return units;
}

bool isAtOrBelow(std::u16string_view path, std::u16string_view root) {
    return path.starts_with(root) && (path.size() == root.size() || root == u"/" || path[root.size()] == u'/');
}

bool canBeWatched(const Value& path) {
    const auto* const string = path.as<NSString>();
    return string != nullptr && !string->isEmpty();
}

} // namespace

struct MemoryFSEvents::Contents {
    mutable std::mutex mutex;
    bool refusesStreams = false;
    bool failsToStart = false;
    std::vector<std::weak_ptr<MemoryStream>> streams;
    std::vector<std::string> calls;
};

class MemoryFSEvents::MemoryStream final : public internal::EventStream {
public:
    MemoryStream(FSEventStreamCallback callback, const FSEventStreamContext& context, Stream description,
                 std::shared_ptr<Contents> contents)
        : EventStream(callback, context, description.latency),
          contents_(std::move(contents)),
          description_(std::move(description)) {}

    void scheduleWithRunLoop(std::shared_ptr<RunLoop> runLoop) override {
        note("schedule", [&] { description_.runLoop = runLoop; });
        EventStream::scheduleWithRunLoop(std::move(runLoop));
    }
    [[nodiscard]] bool start() override {
        note("start", [] {});
        return EventStream::start();
    }
    void stop() override {
        note("stop", [] {});
        EventStream::stop();
    }
    void invalidate() override {
        note("invalidate", [&] { description_.runLoop.reset(); });
        EventStream::invalidate();
    }
    void release() override {
        note("release", [&] { description_.runLoop.reset(); });
        EventStream::release();
    }

    /// With the lock of the contents.
    [[nodiscard]] const Stream& description() const { return description_; }

    /// With the lock of the contents, on any thread.
    void emit(const NSString& path, FSEventStreamEventFlags flags) {
        const std::u16string_view units = withoutTrailingSlash(path);
        const auto& roots = description_.pathsToWatch;
        // Another thread may be taking the stream off its loop just now.
        const bool isWatched =
            description_.isStarted && description_.runLoop != nullptr &&
            std::ranges::any_of(roots, [&](const Value& root) {
                return canBeWatched(root) && isAtOrBelow(units, withoutTrailingSlash(*root.as<NSString>()));
            });
        if (isWatched) {
            description_.runLoop->perform([weak = std::weak_ptr(session_), path = NSString(units), flags] {
                if (const auto session = weak.lock()) {
                    session->stream.take(path, flags);
                }
            });
        }
    }

protected:
    [[nodiscard]] bool beginWatching(const std::shared_ptr<RunLoop>& /*runLoop*/) override {
        const std::scoped_lock lock(contents_->mutex);
        description_.isStarted = !contents_->failsToStart;
        session_ = description_.isStarted ? std::make_shared<Session>(Session{*this}) : nullptr;
        return description_.isStarted;
    }
    void endWatching() override {
        const std::scoped_lock lock(contents_->mutex);
        description_.isStarted = false;
        session_.reset();
        static_cast<void>(events_.take());
    }
    [[nodiscard]] internal::EventBatch takeEvents() override {
        internal::EventBatch batch;
        std::vector<NSString> paths;
        for (auto& [path, flags] : events_.take()) {
            paths.push_back(std::move(path));
            batch.flags.push_back(flags);
        }
        batch.paths = NSArray(paths);
        return batch;
    }

private:
    // From a start to the next stop: what was emitted in another one is not told.
    struct Session {
        MemoryStream& stream;
    };

    template <typename Change>
    void note(const char* call, Change change) {
        const std::scoped_lock lock(contents_->mutex);
        contents_->calls.emplace_back(call);
        change();
    }
    void take(const NSString& path, FSEventStreamEventFlags flags) {
        events_.add(path, flags);
        beginWindow();
    }

    std::shared_ptr<Contents> contents_;
    Stream description_; // guarded by the contents' lock, as is what is below
    std::shared_ptr<Session> session_;
    internal::JoinedEvents<NSString> events_; // the run loop's thread only
};

MemoryFSEvents::MemoryFSEvents() : contents_(std::make_shared<Contents>()) {}

MemoryFSEvents::~MemoryFSEvents() = default;

void MemoryFSEvents::emit(const NSString& path, FSEventStreamEventFlags flags) {
    std::vector<std::shared_ptr<MemoryStream>> alive; // given back without the lock
    const std::scoped_lock lock(contents_->mutex);
    for (const auto& stream : contents_->streams) {
        if (auto each = stream.lock()) {
            each->emit(path, flags);
            alive.push_back(std::move(each));
        }
    }
}

void MemoryFSEvents::refuseStreams(bool refuse) {
    const std::scoped_lock lock(contents_->mutex);
    contents_->refusesStreams = refuse;
}

void MemoryFSEvents::failStart(bool fail) {
    const std::scoped_lock lock(contents_->mutex);
    contents_->failsToStart = fail;
}

std::vector<MemoryFSEvents::Stream> MemoryFSEvents::streams() const {
    std::vector<std::shared_ptr<MemoryStream>> alive;
    std::vector<Stream> descriptions;
    const std::scoped_lock lock(contents_->mutex);
    for (const auto& stream : contents_->streams) {
        if (auto each = stream.lock()) {
            descriptions.push_back(each->description());
            alive.push_back(std::move(each));
        }
    }
    return descriptions;
}

std::vector<std::string> MemoryFSEvents::calls() const {
    const std::scoped_lock lock(contents_->mutex);
    return contents_->calls;
}

FSEventStreamRef MemoryFSEvents::streamCreate(FSEventStreamCallback callback, const FSEventStreamContext& context,
                                              const NSArray& pathsToWatch, FSEventStreamEventId sinceWhen,
                                              double latency, FSEventStreamCreateFlags flags) {
    const std::scoped_lock lock(contents_->mutex);
    contents_->calls.emplace_back("create");
    if (contents_->refusesStreams || callback == nullptr || !std::ranges::any_of(pathsToWatch, canBeWatched)) {
        return nullptr;
    }
    const auto stream = std::make_shared<MemoryStream>(
        callback, context, Stream{pathsToWatch, sinceWhen, latency, flags, nullptr, false}, contents_);
    std::erase_if(contents_->streams, [](const auto& each) { return each.expired(); });
    contents_->streams.push_back(stream);
    return internal::EventStream::handOut(stream);
}

} // namespace qk::platform::memory
