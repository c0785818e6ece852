// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSNotificationCenter.h"
#include "QKFoundation/platform/objects/NSPredicate.h"
#include "QKFoundation/platform/objects/NSSortDescriptor.h"
#include "QKFoundation/platform/services/NSMetadataQuery.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/recent_items/MetadataItemSet.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace qk {

/// `MetadataItemQuery`: a live query of the metadata index that hands the first of its results, in their order and up
/// to a number, to a callback on a background queue: when the gathering is finished, and after every update.
///
/// Threads: `start` on a thread that runs its run loop; everything else anywhere at the same time, but for the items.
class QK_EXPORT MetadataItemQuery final : public NSObject {
public:
    /// Called with `resultItems` itself, which the next delivery empties: one that keeps items copies them before it
    /// returns. Empty sets are handed on too.
    using Callback = std::function<void(const std::shared_ptr<MetadataItemSet>& items)>;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `metadataItemQueryWithSearchScopes:predicate:sortDescriptors:maximalNumberOfResults:`. As the initialiser.
    [[nodiscard]] static std::shared_ptr<MetadataItemQuery>
    metadataItemQueryWithSearchScopes(const NSArray& scopes, const std::shared_ptr<const NSPredicate>& predicate,
                                      const std::vector<NSSortDescriptor>& sortDescriptors,
                                      std::uint64_t maximalNumberOfResults);

    /// `initWithSearchScopes:predicate:sortDescriptors:maximalNumberOfResults:`. A query, not started, of the items
    /// below the folders at `scopes` (paths; everywhere when empty) that meet `predicate`.
    [[nodiscard]] static std::shared_ptr<MetadataItemQuery>
    initWithSearchScopes(const NSArray& scopes, const std::shared_ptr<const NSPredicate>& predicate,
                         const std::vector<NSSortDescriptor>& sortDescriptors, std::uint64_t maximalNumberOfResults);
    /// The same on a machine of one's own.
    [[nodiscard]] static std::shared_ptr<MetadataItemQuery>
    initWithSearchScopes(const std::shared_ptr<const platform::Services>& services, const NSArray& scopes,
                         const std::shared_ptr<const NSPredicate>& predicate,
                         const std::vector<NSSortDescriptor>& sortDescriptors, std::uint64_t maximalNumberOfResults);

    /// Stops, and empties `resultItems`.
    ~MetadataItemQuery() override;

    /// `start`. Does nothing when the query runs.
    void start();

    /// `stop`. Does nothing when the query does not run. What has been told already is delivered still.
    void stop();

    /// `isStarted`. Whether the platform's query runs.
    [[nodiscard]] bool isStarted() const;

    /// `keyPathsForValuesAffectingStarted`. What observers of `started` are told to follow.
    /// Deliberate: it goes through a property `query` that there is none of.
    [[nodiscard]] static std::set<NSString> keyPathsForValuesAffectingStarted();

    /// `registerNotifications` and `deregisterNotifications`. Begins and ends to listen to the platform's query.
    void registerNotifications();
    void deregisterNotifications();

    /// `didFinishGatheringNotification:` and `didUpdateNotification:`. Process the query that is the notification's
    /// object; a notification without one is ignored.
    void didFinishGatheringNotification(const std::shared_ptr<NSNotification>& notification);
    void didUpdateNotification(const std::shared_ptr<NSNotification>& notification);

    /// `processQuery:`. Has the results of `query` taken on the background queue, and its updates wait for that.
    void processQuery(const std::shared_ptr<NSMetadataQuery>& query);

    /// `handleQueryUpdates:`. Replaces the content of `resultItems` by the first results of `query` and calls the
    /// callback. On the background queue.
    void handleQueryUpdates(const std::shared_ptr<NSMetadataQuery>& query);

    /// `metadataQuery`. The platform's query.
    [[nodiscard]] std::shared_ptr<NSMetadataQuery> metadataQuery() const;
    void setMetadataQuery(std::shared_ptr<NSMetadataQuery> query);

    /// `resultItems`. The items of the last delivery; changes on the background queue.
    [[nodiscard]] std::shared_ptr<MetadataItemSet> resultItems() const;
    void setResultItems(std::shared_ptr<MetadataItemSet> items);

    /// `maximalNumberOfResultItems`. How many items are delivered at most.
    [[nodiscard]] std::uint64_t maximalNumberOfResultItems() const;
    void setMaximalNumberOfResultItems(std::uint64_t number);

    /// `maximalNumberOfResults`.
    /// Deliberate: always 0, whatever number was given. That one is `maximalNumberOfResultItems`.
    [[nodiscard]] std::uint64_t maximalNumberOfResults() const noexcept { return 0; }

    /// `callback`. Empty for none.
    [[nodiscard]] Callback callback() const;
    void setCallback(Callback callback);

private:
    MetadataItemQuery(const std::shared_ptr<const platform::Services>& services,
                      std::uint64_t maximalNumberOfResultItems);

    /// The index need not keep more results than are delivered.
    void limitResults(NSMetadataQuery& query) const;

    const std::shared_ptr<const platform::Services> services_;
    mutable std::mutex mutex_; // guards what follows, not what it points to
    std::shared_ptr<NSMetadataQuery> metadataQuery_;
    std::shared_ptr<MetadataItemSet> resultItems_ = MetadataItemSet::set();
    std::uint64_t maximalNumberOfResultItems_;
    Callback callback_;
};

} // namespace qk
