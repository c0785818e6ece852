// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/recent_items/FileSystemObserver.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qk::tests {

using platform::FSEventStreamEventFlags;

inline constexpr auto kCreated = platform::kFSEventStreamEventFlagItemCreated;
inline constexpr auto kRemoved = platform::kFSEventStreamEventFlagItemRemoved;
inline constexpr auto kModified = platform::kFSEventStreamEventFlagItemModified;
inline constexpr auto kFile = platform::kFSEventStreamEventFlagItemIsFile;
inline constexpr auto kFolder = platform::kFSEventStreamEventFlagItemIsDir;
inline constexpr std::int64_t kAny = FileSystemObserverChangeAny;

/// Writes down what it is told: "folder/|name" for each item, and "time-out".
class Delegate : public FileSystemObserverDelegate {
public:
    void fileSystemObserver(FileSystemObserver& /*observer*/, const NSArray& didObserveChangeInFiles,
                            const NSArray& atURLs) override {
        ++calls;
        ASSERT_EQ(didObserveChangeInFiles.count(), atURLs.count());
        for (std::size_t index = 0; index < atURLs.count(); ++index) {
            told.push_back(atURLs[index].as<NSURL>()->absoluteString().utf8Lossy() + "|" +
                           didObserveChangeInFiles[index].as<NSString>()->utf8Lossy());
        }
        if (also) {
            also();
        }
    }
    void fileSystemObserverDidTimeout(FileSystemObserver& observer) override {
        EXPECT_EQ(observer.stream(), nullptr) << "it stops before it tells";
        told.emplace_back("time-out");
    }

    int calls = 0;
    std::vector<std::string> told;
    std::function<void()> also;
};

/// A delegate without the optional operation.
class PlainDelegate final : public FileSystemObserverDelegate {
public:
    void fileSystemObserver(FileSystemObserver& /*observer*/, const NSArray& /*didObserveChangeInFiles*/,
                            const NSArray& /*atURLs*/) override {}
};

class FileSystemObservation : public testing::Test {
protected:
    std::shared_ptr<FileSystemObserver> observe(const NSArray& names = {}, std::int64_t itemType = 0,
                                                std::int64_t changeOptions = kAny, double timeout = 0) {
        auto observer = FileSystemObserver::initWithFilesToLookFor(names, itemType, changeOptions, timeout);
        observer->setDelegate(delegate);
        return observer;
    }
    static void batch(FileSystemObserver& observer, const std::vector<NSString>& paths,
                      FSEventStreamEventFlags flags = kCreated | kFile) {
        const std::vector<FSEventStreamEventFlags> each(paths.size(), flags);
        observer.filesChangedAtPaths(NSArray(paths), each);
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::vector<std::string>& told = delegate->told;
};

} // namespace qk::tests
