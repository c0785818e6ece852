// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qk::tests {

inline NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

/// A machine whose user "anna" has a home folder with "Documents" and "Library" in it, and an observer on it.
class RecentItemsFixture : public testing::Test {
protected:
    RecentItemsFixture() {
        machine.users.setUserID(1000);
        machine.users.addPasswordEntry({.name = "anna", .uid = 1000, .homeDirectory = "/home/anna"});
        machine.fileManager.addDirectory("/home/anna/Documents");
        machine.fileManager.addDirectory("/home/anna/Library");
    }
    ~RecentItemsFixture() override {
        for (const auto& each : made) {
            if (const auto alive = each.lock()) {
                alive->shutdown();
            }
        }
        settle(); // what still waits on the main queue holds its observer
    }

    /// Shut down at the end of the test, or it would never die.
    std::shared_ptr<RecentItemsObserver> makeObserver() {
        auto observer = RecentItemsObserver::recentItemsObserver();
        observer->setCallback(
            [this](const RecentItemsObserver::Items& items) { deliveries.push_back(pathsOf(items)); });
        made.push_back(observer);
        return observer;
    }
    /// A file that was read at that moment, and that the index knows of.
    void addFile(const NSString& path, double accessed) {
        machine.fileManager.addFile(path);
        touch(path, accessed);
        machine.metadataIndex.updateItem(metadata(path, accessed));
    }
    void touch(const NSString& path, double accessed) {
        machine.fileManager.setResourceValue(path, platform::NSURLContentAccessDateKey, at(accessed));
    }
    static NSDictionary metadata(const NSString& path, double modified) {
        using namespace platform;
        return {{NSMetadataItemPathKey, path},
                {kMDItemContentTypeTree, NSArray{"public.text", "public.content", "public.item"}},
                {kMDItemContentModificationDate, at(modified)}};
    }
    static std::shared_ptr<NSMetadataItem> metadataItem(const NSString& path) {
        return NSMetadataItem::initWithAttributes({{platform::NSMetadataItemPathKey, path}});
    }
    static std::vector<std::string> pathsOf(const RecentItemsObserver::Items& items) {
        std::vector<std::string> paths;
        for (const auto& item : items) {
            paths.push_back(item->path().value_or("(none)").utf8Lossy());
        }
        return paths;
    }
    /// Everything that waits for a thread is done.
    void settle() {
        do {
            machine.dispatch.drain();
        } while (machine.dispatch.runBackground() > 0);
    }
    void makeFolder(const NSString& path) {
        machine.fileManager.addDirectory(path);
        machine.fsEvents.emit(path, platform::kFSEventStreamEventFlagItemCreated |
                                        platform::kFSEventStreamEventFlagItemIsDir);
        machine.dispatch.advance(1);
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
    std::vector<std::vector<std::string>> deliveries;
    std::vector<std::weak_ptr<RecentItemsObserver>> made;
};

} // namespace qk::tests
