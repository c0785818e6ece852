// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/contracts/ChangingFiles.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace qk::tests {

inline NSArray pathsArray(const std::vector<std::string>& paths) {
    std::vector<NSString> strings;
    for (const std::string& path : paths) {
        strings.push_back(NSString::fromUTF8(path).value());
    }
    return NSArray(strings);
}

/// A stream and what it told.
class FSEventsWatch {
public:
    FSEventsWatch(ChangingFiles& files, const NSArray& paths) : files_(files) {
        stream_ = files.events().streamCreate(tell, {0, this}, paths, platform::kFSEventStreamEventIdSinceNow, kLatency,
                                              platform::kFSEventStreamCreateFlagUseCFTypes |
                                                  platform::kFSEventStreamCreateFlagFileEvents);
        if (stream_ != nullptr) {
            stream_->scheduleWithRunLoop(files.runLoop());
        }
    }
    FSEventsWatch(const FSEventsWatch&) = delete;
    FSEventsWatch& operator=(const FSEventsWatch&) = delete;
    ~FSEventsWatch() { release(); }

    [[nodiscard]] bool exists() const { return stream_ != nullptr; }
    [[nodiscard]] platform::FSEventStream& stream() const { return *stream_; }
    void release() {
        if (platform::FSEventStreamRef stream = std::exchange(stream_, nullptr); stream != nullptr) {
            stream->release();
        }
    }

    /// All that happened up to now, by its path; makes and removes a folder to know when it has been told.
    std::map<std::string, platform::FSEventStreamEventFlags> changes(const std::string& fence = "fence") {
        files_.makeFolder(fence);
        files_.removeFolder(fence);
        const std::string last = files_.path(fence);
        EXPECT_TRUE(files_.runUntil([&] {
            return joined_.contains(last) && (joined_[last] & platform::kFSEventStreamEventFlagItemRemoved) != 0;
        }));
        auto result = std::exchange(joined_, {});
        result.erase(last);
        return result;
    }

    std::vector<std::vector<std::string>> batches;
    std::vector<platform::FSEventStreamEventId> ids;
    std::function<void()> whenCalled = [] {};

private:
    static constexpr double kLatency = 0.01;

    static void tell(platform::FSEventStreamRef stream, void* info, std::size_t numEvents, const NSArray& paths,
                     std::span<const platform::FSEventStreamEventFlags> flags,
                     std::span<const platform::FSEventStreamEventId> ids) {
        auto& self = *static_cast<FSEventsWatch*>(info);
        EXPECT_EQ(stream, self.stream_);
        EXPECT_EQ(paths.count(), numEvents);
        EXPECT_EQ(flags.size(), numEvents);
        EXPECT_EQ(ids.size(), numEvents);
        self.batches.emplace_back();
        for (std::size_t index = 0; index < numEvents; ++index) {
            const std::string path = paths[index].as<NSString>()->utf8Lossy();
            self.joined_[path] |= flags[index];
            self.batches.back().push_back(path);
        }
        self.ids.insert(self.ids.end(), ids.begin(), ids.end());
        self.whenCalled();
    }

    ChangingFiles& files_;
    platform::FSEventStreamRef stream_;
    std::map<std::string, platform::FSEventStreamEventFlags> joined_;
};

} // namespace qk::tests
