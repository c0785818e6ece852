// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Recent.h"

#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/services/Services.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/PathText.h"
#include "tools/qkinfo/Terminal.h"

#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace qk::info {

namespace {

constexpr double kLongestInReport = 10; // seconds

std::string_view kindWord(std::uint64_t type) {
    static constexpr std::array<std::string_view, 6> kWords{"unknown", "file", "link", "folder", "package", "volume"};
    return kWords[type < kWords.size() ? type : RecentItemTypeUnknown];
}

std::optional<Content> dateContent(const std::optional<NSDate>& date) {
    const std::optional<Content> moment = momentContent(date);
    return moment.has_value() ? std::optional<Content>(Date{std::get<Moment>(*moment)}) : std::nullopt;
}

Facts factsOf(const RecentItem& item) {
    std::string rights = "---";
    rights[0] = item.isReadable() ? 'r' : '-';
    rights[1] = item.isWriteable() ? 'w' : '-';
    rights[2] = item.isExecuteable() ? 'x' : '-';
    return {
        {"last_used", "Last used", dateContent(item.latestInteractionDate())},
        {"kind", "Kind", std::string(kindWord(item.type()))},
        {"rights", "Rights", std::move(rights), Audience::People},
        {"readable", "Readable", item.isReadable(), Audience::Programs},
        {"writable", "Writable", item.isWriteable(), Audience::Programs},
        {"executable", "Executable", item.isExecuteable(), Audience::Programs},
        {"path", "Path", Path{wellFormedUTF8(item.path().value_or(NSString()))}},
    };
}

/// The home folder in the form that events are told with.
NSString readableHome(const std::string& home) {
    const NSString path = absolutePathString(home);
    const platform::FileManager& files = *platform::services()->fileManager;
    const std::optional<NSURL> url = NSURL::fileURLWithPath(path, true);
    if (!url.has_value() || !files.contentsOfDirectoryAtPath(path).has_value()) {
        throw std::runtime_error("\"" + home + "\" is no folder that can be read");
    }
    const auto values = files.resourceValuesForKeys(*url, {platform::NSURLCanonicalPathKey});
    const auto* canonical = values.has_value() ? values->get<NSString>(platform::NSURLCanonicalPathKey) : nullptr;
    return canonical != nullptr ? *canonical : path.stringByAppendingPathComponent(NSString());
}

BusyLine busyLine() {
    return {terminalAt(STDERR_FILENO).takesSequences ? STDERR_FILENO : -1, "Looking for recent items"};
}

} // namespace

std::optional<NSString> homeOf(const RecentOptions& options) {
    return options.home.has_value() ? std::optional(readableHome(*options.home)) : std::nullopt;
}

RecentItemsWatch::RecentItemsWatch(const std::optional<NSString>& home, Changed changed) {
    observer_ = RecentItemsObserver::recentItemsObserver();
    if (home.has_value()) {
        observer_->shutdown();
        observer_->setUserHomePath(*home);
        observer_->createQuery();
        observer_->createFileSystemObserver();
    }
    observer_->setCallback(std::move(changed));
    observer_->startObserving();
}

RecentItemsWatch::~RecentItemsWatch() {
    observer_->setCallback(nullptr);
    observer_->stopObserving();
    observer_->shutdown();
}

List recentList(const RecentItemsObserver::Items& items) {
    List list{{}, "No recent items were found.", "item", "items"};
    for (const std::shared_ptr<RecentItem>& item : items) {
        list.records.push_back(factsOf(*item));
    }
    return list;
}

Section recentSection(const RecentOptions& options) {
    const std::optional<NSString> home = homeOf(options);
    std::optional<List> list;
    const BusyLine line = busyLine();
    drawBusyLine(line);
    const RecentItemsWatch watch(home, [&](const auto& latest) { list = recentList(latest); });
    serveMainLoop([&] { return list.has_value(); }, line);
    return {kRecentKey, kRecentTitle, *std::move(list)};
}

std::optional<Body> recent(const Surroundings& /*surroundings*/) {
    std::optional<Body> body;
    bool isLate = false;
    const auto limit =
        platform::services()->dispatch->mainRunLoop()->scheduleTimer(kLongestInReport, false, [&] { isLate = true; });
    const BusyLine line = busyLine();
    drawBusyLine(line);
    const RecentItemsWatch watch(std::nullopt, [&](const auto& latest) { body = recentList(latest); });
    serveMainLoop([&] { return body.has_value() || isLate; }, line);
    return body;
}

} // namespace qk::info
