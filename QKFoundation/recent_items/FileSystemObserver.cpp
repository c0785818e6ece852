// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/FileSystemObserver.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/recent_items/internal/FileSystemEventCallback.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace qk {
namespace {

using namespace platform;

constexpr double kDefaultTimeout = 10; // seconds
constexpr double kLatency = 0.5;       // seconds

// The flag of the event that each kind of change asks for.
constexpr std::array kRequestedChanges{
    std::pair(FileSystemObserverChangeCreated, kFSEventStreamEventFlagItemCreated),
    std::pair(FileSystemObserverChangeModified, kFSEventStreamEventFlagItemModified),
    std::pair(FileSystemObserverChangeRemoved, kFSEventStreamEventFlagItemRemoved),
};

} // namespace

FileSystemObserverDelegate::~FileSystemObserverDelegate() = default;

void FileSystemObserverDelegate::fileSystemObserverDidTimeout(FileSystemObserver& /*observer*/) {}

const ProtocolDescription& FileSystemObserverDelegate::describedProtocol() {
    static const ProtocolDescription& description = ProtocolBuilder("FileSystemObserverDelegate")
                                                        .method("fileSystemObserver:didObserveChangeInFiles:atURLs:")
                                                        .optionalMethod("fileSystemObserverDidTimeout:")
                                                        .build();
    return description;
}

const ClassDescription& FileSystemObserver::describedClass() {
    using Self = FileSystemObserver;
    static const ClassDescription& description =
        ClassBuilder<Self>("FileSystemObserver", NSObject::describedClass())
            .property("shouldTimeout", &Self::shouldTimeout, &Self::setShouldTimeout)
            .property("timeoutDate", &Self::timeoutDate, &Self::setTimeoutDate)
            .property("filesToLookFor", &Self::filesToLookFor, &Self::setFilesToLookFor)
            .property("itemType", &Self::itemType, &Self::setItemType)
            .property("changeOptions", &Self::changeOptions, &Self::setChangeOptions)
            .method("startObservingAtPath:", &Self::startObservingAtPath)
            .method("startObservingAtPaths:", &Self::startObservingAtPaths)
            .method("stopObserving", &Self::stopObserving)
            .method("isFileToLookForAtPath:", &Self::isFileToLookForAtPath)
            .method("verifyEventFlags:", &Self::verifyEventFlags)
            .method("itemTypeMatchingEventFlags:", &Self::itemTypeMatchingEventFlags)
            .method("changeOptionsMatchingEventFlags:", &Self::changeOptionsMatchingEventFlags)
            .build();
    return description;
}

const ClassDescription& FileSystemObserver::classDescription() const {
    return describedClass();
}

FileSystemObserver::FileSystemObserver(std::shared_ptr<const Services> services) : services_(std::move(services)) {}

std::shared_ptr<FileSystemObserver> FileSystemObserver::fileSystemObserver() {
    return fileSystemObserverWithFilesToLookFor(NSArray());
}

std::shared_ptr<FileSystemObserver>
FileSystemObserver::fileSystemObserverWithItemType(std::int64_t itemType, std::int64_t changeOptions, double timeout) {
    return initWithFilesToLookFor(NSArray(), itemType, changeOptions, timeout);
}

std::shared_ptr<FileSystemObserver> FileSystemObserver::fileSystemObserverWithFileToLookFor(const NSString& name) {
    return fileSystemObserverWithFilesToLookFor(NSArray{name});
}

std::shared_ptr<FileSystemObserver> FileSystemObserver::fileSystemObserverWithFileToLookFor(const NSString& name,
                                                                                            std::int64_t itemType,
                                                                                            std::int64_t changeOptions,
                                                                                            double timeout) {
    return initWithFilesToLookFor(NSArray{name}, itemType, changeOptions, timeout);
}

std::shared_ptr<FileSystemObserver> FileSystemObserver::fileSystemObserverWithFilesToLookFor(const NSArray& names) {
    return initWithFilesToLookFor(names, FileSystemObserverItemTypeAny, FileSystemObserverChangeAny, kDefaultTimeout);
}

std::shared_ptr<FileSystemObserver> FileSystemObserver::fileSystemObserverWithFilesToLookFor(const NSArray& names,
                                                                                             std::int64_t itemType,
                                                                                             std::int64_t changeOptions,
                                                                                             double timeout) {
    return initWithFilesToLookFor(names, itemType, changeOptions, timeout);
}

std::shared_ptr<FileSystemObserver> FileSystemObserver::initWithFilesToLookFor(const NSArray& names,
                                                                               std::int64_t itemType,
                                                                               std::int64_t changeOptions,
                                                                               double timeout) {
    return initWithFilesToLookFor(services(), names, itemType, changeOptions, timeout);
}

std::shared_ptr<FileSystemObserver>
FileSystemObserver::initWithFilesToLookFor(const std::shared_ptr<const Services>& services, const NSArray& names,
                                           std::int64_t itemType, std::int64_t changeOptions, double timeout) {
    std::shared_ptr<FileSystemObserver> observer(new FileSystemObserver(services));
    observer->shouldTimeout_ = timeout > 0;
    observer->timeoutDate_ =
        NSDate::dateWithTimeIntervalSince1970(services->clock->now().timeIntervalSince1970() + timeout);
    observer->filesToLookFor_ = names;
    observer->itemType_ = itemType;
    observer->changeOptions_ = changeOptions;
    return observer;
}

FileSystemObserver::~FileSystemObserver() {
    stopObserving();
}

void FileSystemObserver::startObservingAtPath(const NSString& path) {
    startObservingAtPaths(NSArray{path});
}

void FileSystemObserver::startObservingAtPaths(const NSArray& paths) {
    if (stream_ != nullptr) {
        stopObserving();
    }
    // The observer stops the stream before it dies, so the stream need not retain it.
    const FSEventStreamContext context{.version = 0, .info = this};
    FSEventStream* const stream = services_->fsEvents->streamCreate(
        internal::fileSystemEventCallback, context, paths, kFSEventStreamEventIdSinceNow, kLatency,
        kFSEventStreamCreateFlagUseCFTypes | kFSEventStreamCreateFlagFileEvents);
    if (stream == nullptr) {
        return;
    }
    stream->scheduleWithRunLoop(services_->dispatch->currentRunLoop());
    stream_ = stream;
    if (!stream->start()) {
        stopObserving();
    }
}

void FileSystemObserver::stopObserving() {
    if (FSEventStream* const stream = std::exchange(stream_, nullptr)) {
        stream->stop();
        stream->invalidate();
        stream->release();
    }
}

void FileSystemObserver::filesChangedAtPaths(const NSArray& paths,
                                             std::span<const FSEventStreamEventFlags> withEventFlags) {
    const auto self = shared_from_this(); // the delegate may let go of the observer
    const auto delegate = delegate_;      // and be taken away meanwhile
    const NSDictionary folders = matchingFolders(paths, withEventFlags);
    if (!folders.isEmpty()) {
        std::vector<Value> urls;
        urls.reserve(folders.count());
        std::ranges::transform(folders, std::back_inserter(urls), &NSDictionary::Entry::second);
        if (delegate != nullptr) {
            delegate->fileSystemObserver(*this, NSArray(folders.allKeys()), NSArray(std::move(urls)));
        }
    } else if (shouldTimeout_ && timeoutDate_.has_value() && *timeoutDate_ < services_->clock->now()) {
        stopObserving();
        if (delegate != nullptr) {
            delegate->fileSystemObserverDidTimeout(*this);
        }
    }
}

NSDictionary FileSystemObserver::matchingFolders(const NSArray& paths,
                                                 std::span<const FSEventStreamEventFlags> flags) const {
    static const NSString& privateTree = *new NSString("/private");
    NSMutableDictionary folders;
    const std::size_t count = std::min(paths.count(), flags.size());
    for (std::size_t index = 0; index < count; ++index) {
        const auto* path = paths[index].as<NSString>();
        if (path == nullptr || !isFileToLookForAtPath(*path) || !verifyEventFlags(flags[index])) {
            continue;
        }
        const NSString folder = path->stringByDeletingLastPathComponent();
        // The text alone counts: "/privateer" is left out as well.
        const auto url = folder.hasPrefix(privateTree) ? std::nullopt : NSURL::fileURLWithPath(folder, true);
        if (url.has_value()) {
            folders.setObject(*url, path->lastPathComponent());
        }
    }
    return folders.copy();
}

bool FileSystemObserver::isFileToLookForAtPath(const NSString& path) const {
    if (filesToLookFor_.isEmpty()) {
        return true;
    }
    const NSString name = path.lastPathComponent();
    return std::ranges::any_of(filesToLookFor_.values(), [&name](const Value& entry) {
        const auto* part = entry.as<NSString>();
        return part != nullptr && name.contains(part->units()); // the empty text is found nowhere
    });
}

bool FileSystemObserver::verifyEventFlags(FSEventStreamEventFlags flags) const {
    return itemTypeMatchingEventFlags(flags) && changeOptionsMatchingEventFlags(flags);
}

bool FileSystemObserver::itemTypeMatchingEventFlags(FSEventStreamEventFlags flags) const {
    const auto has = [flags](FSEventStreamEventFlags flag) { return (flags & flag) != 0; };
    return itemType_ == FileSystemObserverItemTypeAny ||
           (has(kFSEventStreamEventFlagItemIsDir) && itemType_ == FileSystemObserverItemTypeDirectory) ||
           (has(kFSEventStreamEventFlagItemIsFile) && itemType_ == FileSystemObserverItemTypeFile);
}

bool FileSystemObserver::changeOptionsMatchingEventFlags(FSEventStreamEventFlags flags) const {
    const auto isRequested = [this](std::int64_t option) { return (changeOptions_ & option) != 0; };
    return isRequested(FileSystemObserverChangeAny) || std::ranges::all_of(kRequestedChanges, [&](const auto& change) {
               return !isRequested(change.first) || (flags & change.second) != 0;
           });
}

void internal::fileSystemEventCallback(FSEventStreamRef /*stream*/, void* info, std::size_t /*numEvents*/,
                                       const NSArray& eventPaths, std::span<const FSEventStreamEventFlags> eventFlags,
                                       std::span<const FSEventStreamEventId> /*eventIds*/) {
    static_cast<FileSystemObserver*>(info)->filesChangedAtPaths(eventPaths, eventFlags);
}

} // namespace qk
