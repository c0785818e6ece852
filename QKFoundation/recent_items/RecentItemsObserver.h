// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/recent_items/FileSystemObserver.h"
#include "QKFoundation/recent_items/MetadataItemQuery.h"
#include "QKFoundation/recent_items/RecentItem.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace qk {

/// `RecentItemsObserver`: keeps a list of the files and folders that the user used last, and hands the twenty latest to
/// a callback on the main thread whenever the list may have changed. They are looked for in the folders of the home
/// folder, not among the files that lie directly in it; a folder that is made there is taken in.
///
///     const auto observer = RecentItemsObserver::recentItemsObserver();
///     observer->setCallback([](const auto& items) { show(items); });
///     observer->startObserving();
///     ...
///     observer->stopObserving();
///     observer->shutdown();
///
/// Threads: made, started, stopped and shut down on the main thread, which runs its run loop. The list is guarded and
/// may be read anywhere; it changes on the background queue.
class QK_EXPORT RecentItemsObserver final : public NSObject, public FileSystemObserverDelegate {
public:
    using Items = std::vector<std::shared_ptr<RecentItem>>;
    using MetadataItems = std::span<const std::shared_ptr<NSMetadataItem>>;
    using Callback = std::function<void(const Items& latestItems)>;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `recentItemsObserver`. As the initialiser.
    [[nodiscard]] static std::shared_ptr<RecentItemsObserver> recentItemsObserver();

    /// `init`. Watches the home folder from now on; the query does not run yet.
    /// Deliberate: the watcher holds its delegate, so the observer stays alive until `shutdown`, whoever lets it go.
    [[nodiscard]] static std::shared_ptr<RecentItemsObserver> init();
    /// The same on a machine of one's own.
    [[nodiscard]] static std::shared_ptr<RecentItemsObserver>
    init(const std::shared_ptr<const platform::Services>& services);

    /// Stops the query.
    ~RecentItemsObserver() override;

    /// `startObserving`. Starts the query unless it runs.
    void startObserving();

    /// `stopObserving`. Stops the query; the home folder is watched still.
    void stopObserving();

    /// `shutdown`. Watches the home folder no longer, and lets the watcher go of this observer.
    void shutdown();

    /// `fileSystemObserver:didObserveChangeInFiles:atURLs:`. Makes the query anew, and starts it if it ran, when one of
    /// the folders is the home folder.
    void fileSystemObserver(FileSystemObserver& observer, const NSArray& didObserveChangeInFiles,
                            const NSArray& atURLs) override;

    /// `updateResultsWithMetadataItems:`. Makes the list that of `items`, and has the callback called. Where several
    /// items have the same name, their order counts. What the query calls, on the background queue.
    void updateResultsWithMetadataItems(MetadataItems items);

    /// `recentItemsForMetadataItems:`. An item for each that has a path.
    [[nodiscard]] Items recentItemsForMetadataItems(MetadataItems items) const;

    /// `removeOutdatedItemsThatAreNotPresentInItems:`. Takes those out of the list whose path none of `items` has.
    void removeOutdatedItemsThatAreNotPresentInItems(const Items& items);

    /// `updateRecentItems:`. Appends each of `items` to the list, but updates by it when the list has its path.
    void updateRecentItems(const Items& items);

    /// `updateRecentItem:`. When `item` is later than the first of the list with its name: takes all with that one's
    /// path away and appends `item`. Else, and when one of them has no date, the list stays.
    /// Deliberate: the name decides, not the path, so of files with one name in several folders the first may be
    /// replaced by another.
    void updateRecentItem(const std::shared_ptr<RecentItem>& item);

    /// `recentItemForDisplayName:`. The first of the list with that name; null when there is none.
    [[nodiscard]] std::shared_ptr<RecentItem> recentItemForDisplayName(const std::optional<NSString>& name) const;

    /// `latestRecentItems`. The twenty of the list with the latest interaction, latest first; those without a date come
    /// last, and those with the same in the order of the list.
    [[nodiscard]] Items latestRecentItems() const;

    /// `createFileSystemObserver`. Begins to watch the home folder for new folders, on this thread's run loop.
    void createFileSystemObserver();

    /// `createQuery`. Replaces the query by one, not started, of the folders that there are now.
    void createQuery();

    /// `createSearchPaths`. The paths of the folders in the home folder that can be read, ascending, but for hidden
    /// ones and "Library".
    [[nodiscard]] NSArray createSearchPaths() const;

    /// `createPredicateWithUTIs:`. The condition to be of one of these types (strings); of "public.item" without any.
    [[nodiscard]] std::shared_ptr<const NSPredicate> createPredicateWithUTIs(const NSArray& identifiers) const;

    /// `userHomePath`. The home folder, without symbolic links and without a trailing "/": what events are told with.
    [[nodiscard]] const NSString& userHomePath() const noexcept { return userHomePath_; }
    void setUserHomePath(const NSString& path) { userHomePath_ = path; }

    /// `metadataQuery`. The query of now.
    [[nodiscard]] std::shared_ptr<MetadataItemQuery> metadataQuery() const;
    void setMetadataQuery(std::shared_ptr<MetadataItemQuery> query);

    /// `recentItems`. The list, in the order in which items came in.
    [[nodiscard]] Items recentItems() const;
    void setRecentItems(Items items);

    /// `userHomeObserver`. The watcher of the home folder.
    [[nodiscard]] const std::shared_ptr<FileSystemObserver>& userHomeObserver() const noexcept {
        return userHomeObserver_;
    }
    void setUserHomeObserver(std::shared_ptr<FileSystemObserver> observer) { userHomeObserver_ = std::move(observer); }

    /// `isObserving`.
    /// Deliberate: always false, also while the query runs; ask that one.
    [[nodiscard]] bool isObserving() const noexcept { return false; }

    /// `callback`. Called on the main thread; empty for none.
    [[nodiscard]] Callback callback() const;
    void setCallback(Callback callback);

private:
    explicit RecentItemsObserver(std::shared_ptr<const platform::Services> services);

    const std::shared_ptr<const platform::Services> services_;
    NSString userHomePath_;
    std::shared_ptr<FileSystemObserver> userHomeObserver_;
    mutable std::recursive_mutex mutex_; // guards what follows; held for the whole of a delivery
    std::shared_ptr<MetadataItemQuery> metadataQuery_;
    Items recentItems_;
    Callback callback_;
};

} // namespace qk
