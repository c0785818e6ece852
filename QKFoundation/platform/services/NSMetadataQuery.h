// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/NSPredicate.h"
#include "QKFoundation/platform/objects/NSRecursiveLock.h"
#include "QKFoundation/platform/objects/NSSortDescriptor.h"
#include "QKFoundation/platform/services/MetadataIndex.h"
#include "QKFoundation/platform/values/NSArray.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace qk {

namespace platform {
struct Services;
}

// Notifications of the default centre, whose object is the query; posted on the thread that started it, from its run
// loop.
inline constexpr char NSMetadataQueryDidStartGatheringNotification[] = "NSMetadataQueryDidStartGatheringNotification";
inline constexpr char NSMetadataQueryGatheringProgressNotification[] = "NSMetadataQueryGatheringProgressNotification";
inline constexpr char NSMetadataQueryDidFinishGatheringNotification[] = "NSMetadataQueryDidFinishGatheringNotification";
inline constexpr char NSMetadataQueryDidUpdateNotification[] = "NSMetadataQueryDidUpdateNotification";

/// A live query of the metadata index: it gathers what there is, tells that it is done, and tells each change then. The
/// property "started" can be observed; observers are called where the query is started or stopped.
///
/// Threads: `startQuery` on a thread with a run loop, which calls everything that the query posts; the rest anywhere at
/// the same time. The results change on that run loop alone.
class QK_EXPORT NSMetadataQuery final : public NSObject {
public:
    /// A query of this machine's index, or of that of `services`, which it goes on asking.
    [[nodiscard]] static std::shared_ptr<NSMetadataQuery> create();
    [[nodiscard]] static std::shared_ptr<NSMetadataQuery> create(const platform::Services& services);

    /// Stops.
    ~NSMetadataQuery() override;

    /// What is searched, for what, in which order. Setting one of them while the query runs drops the results and
    /// gathers anew, from the run loop; without a predicate it ends then. The scopes are paths or file URLs, and
    /// anything else a place where nothing is; an empty array is everywhere.
    [[nodiscard]] NSArray searchScopes() const;
    void setSearchScopes(const NSArray& scopes);
    [[nodiscard]] std::shared_ptr<const NSPredicate> predicate() const;
    void setPredicate(std::shared_ptr<const NSPredicate> predicate);
    [[nodiscard]] std::vector<NSSortDescriptor> sortDescriptors() const;
    void setSortDescriptors(std::vector<NSSortDescriptor> descriptors);

    /// How many of the first results anybody will ask for, so that the index need not keep the others; 0, as it is
    /// made: all of them. Raising it while the query runs gathers anew; lowering it counts from the next start on.
    void setResultLimit(std::size_t limit);

    /// `startQuery`. Gathers on another thread. False when the query runs already or has no predicate.
    bool startQuery();

    /// `stopQuery`. Nothing is posted once it has returned on the thread that started the query; the results stay. On
    /// another thread, a notification may be on its way.
    void stopQuery();

    [[nodiscard]] bool isStarted() const;
    [[nodiscard]] bool isGathering() const;

    /// `disableUpdates` and `enableUpdates`. The results stay as they are between the two, whatever is called; pairs
    /// nest. What changed meanwhile, and that the gathering is finished, is told after the last `enableUpdates`, from
    /// the run loop.
    void disableUpdates();
    void enableUpdates();

    /// `resultCount`.
    [[nodiscard]] std::size_t resultCount() const;

    /// `resultAtIndex:`. Raises `NSRangeException` for an index that is not below `resultCount`.
    [[nodiscard]] std::shared_ptr<NSMetadataItem> resultAtIndex(std::size_t index) const;

    /// The lock that stands for "synchronized on this object".
    [[nodiscard]] NSRecursiveLock& monitor() const noexcept { return *monitor_; }

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

private:
    explicit NSMetadataQuery(const platform::Services& services);

    class State;
    const std::shared_ptr<State> state_;
    const std::shared_ptr<NSRecursiveLock> monitor_ = NSRecursiveLock::init();
};

} // namespace qk
