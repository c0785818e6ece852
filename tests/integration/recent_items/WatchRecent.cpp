// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/recent_items/FileSystemObserver.h"
#include "QKFoundation/recent_items/MetadataItemQuery.h"
#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>

/// Prints what is told of the recent files below a home folder, the argument, a line each time. Its standard input
/// takes commands, one a line, and its end ends the program; each command is answered by "did" and its name.
///
///     recent        watches with RecentItemsObserver:  "recent", then a date and a path for each item
///     find COUNT    the newest of all that is there:   "found", as above, with the dates of the changes
///     changes       watches with FileSystemObserver:   "changed", then the names
///     stop, start   of the RecentItemsObserver
///     end           lets go of everything; answered when all of it is gone
///
/// Fields are separated by tabs; dates are in nanoseconds, as far as a date tells them.
namespace {

using namespace qk;
using namespace qk::platform;

constexpr double kLookInterval = 0.01;

std::string nanoseconds(const NSDate& date) {
    constexpr double kNano = 1e9;
    return std::to_string(std::llround(date.timeIntervalSince1970() * kNano));
}

void print(const std::string& line) {
    static std::mutex& printing = *new std::mutex;
    const std::scoped_lock lock(printing);
    std::cout << line << std::endl; // the reader waits for it
}

NSString stringOf(const std::string& path) {
    return NSString::fromUTF8Lossy(path);
}

NSString realPath(const std::string& path) {
    return stringOf(std::filesystem::canonical(path).string());
}

void printRecent(const RecentItemsObserver::Items& items) {
    std::string line = "recent";
    for (const auto& item : items) {
        const auto& date = item->latestInteractionDate();
        line += "\t" + (date.has_value() ? nanoseconds(*date) : "-") + "\t" + item->path()->utf8Lossy();
    }
    print(line);
}

void printFound(const MetadataItemSet& items) {
    std::string line = "found";
    for (const auto& item : items.allObjects()) {
        const auto& attributes = item->attributes();
        line += "\t" + nanoseconds(*attributes.get<NSDate>(kMDItemContentModificationDate)) + "\t" +
                attributes.get<NSString>(NSMetadataItemPathKey)->utf8Lossy();
    }
    print(line);
}

class PrintingDelegate final : public FileSystemObserverDelegate {
public:
    void fileSystemObserver(FileSystemObserver& /*observer*/, const NSArray& didObserveChangeInFiles,
                            const NSArray& /*atURLs*/) override {
        std::string line = "changed";
        for (const Value& name : didObserveChangeInFiles) {
            line += "\t" + name.as<NSString>()->utf8Lossy();
        }
        print(line);
    }
};

class Program {
public:
    explicit Program(const std::string& home) : home_(stringOf(home)), realHome_(realPath(home)) {
        // What the loop makes once and keeps belongs to what is open from the beginning.
        look_ = loop_->scheduleTimer(0, false, [this] {
            look_ = nullptr;
            print("ready");
        });
    }

    void take(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        std::uint64_t count = 0;
        words >> command >> count;
        const std::map<std::string, std::function<void()>> commands{
            {"recent", [this] { beginRecent(); }},          {"find", [this, count] { beginFind(count); }},
            {"changes", [this] { beginChanges(); }},        {"start", [this] { recent_->startObserving(); }},
            {"stop", [this] { recent_->stopObserving(); }}, {"end", [this] { end(); }},
        };
        commands.at(command)();
        if (command != "end") {
            print("did " + command);
        }
    }

private:
    void beginRecent() {
        recent_ = RecentItemsObserver::recentItemsObserver();
        if (services()->fileManager->homeDirectory() != home_) { // the user has another one
            recent_->shutdown();
            recent_->setUserHomePath(realHome_);
            recent_->createQuery();
            recent_->createFileSystemObserver();
        }
        recent_->setCallback(printRecent);
        recent_->startObserving();
    }

    void beginFind(std::uint64_t count) {
        query_ = MetadataItemQuery::initWithSearchScopes(
            {realHome_}, NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.item'"),
            {{kMDItemContentModificationDate, false}, {kMDItemLastUsedDate, false}}, count);
        query_->setCallback([](const auto& items) { printFound(*items); });
        query_->start();
    }

    void beginChanges() {
        changes_ = FileSystemObserver::fileSystemObserverWithItemType(FileSystemObserverItemTypeAny,
                                                                      FileSystemObserverChangeAny, 0);
        changes_->setDelegate(std::make_shared<PrintingDelegate>());
        changes_->startObservingAtPath(realHome_);
    }

    void end() {
        if (recent_ != nullptr) {
            recent_->stopObserving();
            recent_->shutdown();
        }
        if (query_ != nullptr) {
            query_->stop();
        }
        // Their last deliveries may still be under way.
        isGone_ = [recent = std::weak_ptr(recent_), query = std::weak_ptr(query_), changes = std::weak_ptr(changes_)] {
            return recent.expired() && query.expired() && changes.expired();
        };
        recent_ = nullptr;
        query_ = nullptr;
        changes_ = nullptr;
        look_ = loop_->scheduleTimer(kLookInterval, true, [this] {
            if (isGone_()) {
                look_ = nullptr;
                print("did end");
            }
        });
    }

    const NSString home_;
    const NSString realHome_;
    const std::shared_ptr<RunLoop> loop_ = services()->dispatch->mainRunLoop();
    std::shared_ptr<RecentItemsObserver> recent_;
    std::shared_ptr<MetadataItemQuery> query_;
    std::shared_ptr<FileSystemObserver> changes_;
    std::function<bool()> isGone_;
    std::unique_ptr<RunLoopSource> look_;
};

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    const std::shared_ptr<RunLoop> loop = services()->dispatch->mainRunLoop();
    Program program(arguments[1]);
    std::thread commands([&] {
        for (std::string line; std::getline(std::cin, line);) {
            loop->perform([&program, line] { program.take(line); });
        }
        loop->stop();
    });
    loop->run();
    commands.join();
    return 0;
}
