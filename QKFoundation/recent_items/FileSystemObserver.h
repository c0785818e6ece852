// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"
#include "QKFoundation/platform/services/FSEvents.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace qk {

namespace platform {
struct Services;
}

/// Which items count for a `FileSystemObserver`; any other number matches nothing.
inline constexpr std::int64_t FileSystemObserverItemTypeAny = 0;
inline constexpr std::int64_t FileSystemObserverItemTypeDirectory = 1;
inline constexpr std::int64_t FileSystemObserverItemTypeFile = 2;

/// Which changes count; they add up, and then one event must tell of all of them.
inline constexpr std::int64_t FileSystemObserverChangeAny = 1; ///< whatever else is asked for
inline constexpr std::int64_t FileSystemObserverChangeCreated = 2;
inline constexpr std::int64_t FileSystemObserverChangeModified = 4;
inline constexpr std::int64_t FileSystemObserverChangeRemoved = 8;

class FileSystemObserver;

/// The protocol `FileSystemObserverDelegate`: who is told of changes, on the thread that started the observer. The
/// observer lives until the call returns.
class QK_EXPORT FileSystemObserverDelegate {
public:
    FileSystemObserverDelegate() = default;
    FileSystemObserverDelegate(const FileSystemObserverDelegate&) = delete;
    FileSystemObserverDelegate& operator=(const FileSystemObserverDelegate&) = delete;
    virtual ~FileSystemObserverDelegate();

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `fileSystemObserver:didObserveChangeInFiles:atURLs:`. The names of what changed, each once and ascending, and
    /// for each of them the file URL of the folder that it is in.
    virtual void fileSystemObserver(FileSystemObserver& observer, const NSArray& didObserveChangeInFiles,
                                    const NSArray& atURLs) = 0;

    /// `fileSystemObserverDidTimeout:` (optional). The observer has stopped itself.
    virtual void fileSystemObserverDidTimeout(FileSystemObserver& observer);
};

/// `FileSystemObserver`: watches trees of folders and tells its delegate, at most twice a second, which files have
/// changed and in which folders they are.
///
/// Threads: all on one thread, which runs its run loop and is where the delegate is called. After `stopObserving`, or
/// once the observer is gone, nothing is called any more.
class QK_EXPORT FileSystemObserver final : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `fileSystemObserver`. An observer of every change of every file.
    /// Deliberate: this one and the others that are told no time-out give up after 10 seconds. 0 is no time-out.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver> fileSystemObserver();

    /// `fileSystemObserverWithItemType:changeOptions:timeout:`. In seconds.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver>
    fileSystemObserverWithItemType(std::int64_t itemType, std::int64_t changeOptions, double timeout);

    /// `fileSystemObserverWithFileToLookFor:`.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver> fileSystemObserverWithFileToLookFor(const NSString& name);

    /// `fileSystemObserverWithFileToLookFor:itemType:changeOptions:timeout:`.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver>
    fileSystemObserverWithFileToLookFor(const NSString& name, std::int64_t itemType, std::int64_t changeOptions,
                                        double timeout);

    /// `fileSystemObserverWithFilesToLookFor:`.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver> fileSystemObserverWithFilesToLookFor(const NSArray& names);

    /// `fileSystemObserverWithFilesToLookFor:itemType:changeOptions:timeout:`.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver>
    fileSystemObserverWithFilesToLookFor(const NSArray& names, std::int64_t itemType, std::int64_t changeOptions,
                                         double timeout);

    /// `initWithFilesToLookFor:itemType:changeOptions:timeout:`. An observer, not started, of the items whose name has
    /// one of `names` (strings) in it, at any place and in that letter case; of all without names. The time-out, in
    /// seconds, runs from now on, not from the start; 0 or less is none.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver>
    initWithFilesToLookFor(const NSArray& names, std::int64_t itemType, std::int64_t changeOptions, double timeout);
    /// The same on a machine of one's own.
    [[nodiscard]] static std::shared_ptr<FileSystemObserver>
    initWithFilesToLookFor(const std::shared_ptr<const platform::Services>& services, const NSArray& names,
                           std::int64_t itemType, std::int64_t changeOptions, double timeout);

    /// Stops.
    ~FileSystemObserver() override;

    /// `startObservingAtPath:`. As `startObservingAtPaths` with one path.
    void startObservingAtPath(const NSString& path);

    /// `startObservingAtPaths:`. Watches everything below the folders at `paths` (strings) from now on, instead of what
    /// was watched before. When that is not possible the observer is stopped, and nobody is told.
    void startObservingAtPaths(const NSArray& paths);

    /// `stopObserving`. Does nothing when nothing is watched.
    void stopObserving();

    /// `filesChangedAtPaths:withEventFlags:`. Deals with one batch of events: paths, and flags for each. Tells the
    /// delegate of those that match, once for the batch. Of items with one name in different folders the last counts.
    /// Events in folders whose path begins with "/private" are left out.
    /// Deliberate: only a batch without a match asks whether the time-out has passed, so an observer of a quiet tree
    /// never gives up, nor does one whose batches match. One that has may be started again, until the next such batch.
    void filesChangedAtPaths(const NSArray& paths, std::span<const platform::FSEventStreamEventFlags> withEventFlags);

    /// `isFileToLookForAtPath:`. Whether the last part of the path is one of the names to look for.
    [[nodiscard]] bool isFileToLookForAtPath(const NSString& path) const;

    /// `verifyEventFlags:`. Whether both the kind of item and the change match.
    [[nodiscard]] bool verifyEventFlags(platform::FSEventStreamEventFlags flags) const;

    /// `itemTypeMatchingEventFlags:`.
    [[nodiscard]] bool itemTypeMatchingEventFlags(platform::FSEventStreamEventFlags flags) const;

    /// `changeOptionsMatchingEventFlags:`.
    /// Deliberate: the event has all the changes that are asked for (created and removed: both), so every event
    /// matches when none is.
    [[nodiscard]] bool changeOptionsMatchingEventFlags(platform::FSEventStreamEventFlags flags) const;

    /// `shouldTimeout`. Whether there is a time-out.
    [[nodiscard]] bool shouldTimeout() const noexcept { return shouldTimeout_; }
    void setShouldTimeout(bool shouldTimeout) noexcept { shouldTimeout_ = shouldTimeout; }

    /// `timeoutDate`. When the time-out passes; set also without one.
    [[nodiscard]] const std::optional<NSDate>& timeoutDate() const noexcept { return timeoutDate_; }
    void setTimeoutDate(const std::optional<NSDate>& date) { timeoutDate_ = date; }

    /// `stream`. The stream of events that runs; null while the observer is stopped. Not owned through the property.
    [[nodiscard]] platform::FSEventStreamRef stream() const noexcept { return stream_; }
    void setStream(platform::FSEventStreamRef stream) noexcept { stream_ = stream; }

    /// `filesToLookFor`. Strings.
    [[nodiscard]] const NSArray& filesToLookFor() const noexcept { return filesToLookFor_; }
    void setFilesToLookFor(const NSArray& names) { filesToLookFor_ = names; }

    [[nodiscard]] std::int64_t itemType() const noexcept { return itemType_; }
    void setItemType(std::int64_t itemType) noexcept { itemType_ = itemType; }

    [[nodiscard]] std::int64_t changeOptions() const noexcept { return changeOptions_; }
    void setChangeOptions(std::int64_t changeOptions) noexcept { changeOptions_ = changeOptions; }

    /// `delegate`. Null for none.
    /// Deliberate: it is held strongly. An owner that is the delegate too takes itself away before it lets go.
    [[nodiscard]] const std::shared_ptr<FileSystemObserverDelegate>& delegate() const noexcept { return delegate_; }
    void setDelegate(std::shared_ptr<FileSystemObserverDelegate> delegate) { delegate_ = std::move(delegate); }

private:
    explicit FileSystemObserver(std::shared_ptr<const platform::Services> services);

    [[nodiscard]] NSDictionary matchingFolders(const NSArray& paths,
                                               std::span<const platform::FSEventStreamEventFlags> flags) const;

    const std::shared_ptr<const platform::Services> services_;
    bool shouldTimeout_ = false;
    std::optional<NSDate> timeoutDate_;
    platform::FSEventStreamRef stream_ = nullptr;
    NSArray filesToLookFor_;
    std::int64_t itemType_ = FileSystemObserverItemTypeAny;
    std::int64_t changeOptions_ = 0;
    std::shared_ptr<FileSystemObserverDelegate> delegate_;
};

} // namespace qk
