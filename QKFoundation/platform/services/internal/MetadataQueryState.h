// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/NSMetadataQuery.h"
#include "QKFoundation/platform/services/Services.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace qk {

/// What a query knows, and the search that it runs. The search and the tasks on the run loop hold it weakly, so a query
/// that nobody else holds goes away in the midst of everything. Threads: as the query; no lock is held while anybody
/// else is called.
class NSMetadataQuery::State final : public std::enable_shared_from_this<NSMetadataQuery::State> {
public:
    explicit State(const platform::Services& services) : dispatch_(services.dispatch), index_(services.metadataIndex) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() = default;

    /// What is looked for. `scopes` as the caller gave them.
    struct Wanted {
        NSArray scopes;
        std::shared_ptr<const NSPredicate> predicate;
        std::vector<NSSortDescriptor> sortDescriptors;
        std::size_t limit = 0;
    };

    [[nodiscard]] Wanted wanted() const;

    /// Has `set` change what is looked for; a search that runs begins anew when `set` says so.
    template <typename Set>
    void change(Set set) {
        const std::scoped_lock lock(mutex_);
        if (set(wanted_) && isStarted_) {
            scheduleRestart();
        }
    }

    /// `query` is the object of the notifications.
    void setQuery(const std::shared_ptr<NSMetadataQuery>& query);

    bool start();
    void stop();
    [[nodiscard]] bool isStarted() const;
    [[nodiscard]] bool isGathering() const;
    void disableUpdates();
    void enableUpdates();
    [[nodiscard]] std::size_t resultCount() const;
    [[nodiscard]] std::shared_ptr<NSMetadataItem> resultAtIndex(std::size_t index) const;

private:
    using Generation = std::uint64_t;

    /// The search that runs, and where it was begun: it ends there too.
    struct Run {
        std::shared_ptr<platform::MetadataSearchRun> search;
        std::shared_ptr<platform::RunLoop> runLoop;
        std::thread::id thread;
    };

    void begin(Generation generation);
    void restart(Generation generation);
    void end(Run run);
    void progress(Generation generation);
    void deliver(Generation generation, platform::MetadataResults results);
    void deliverPending(Generation generation);
    void post(const char* name, Generation generation);
    void scheduleRestart(); // with the lock held

    const std::shared_ptr<platform::Dispatch> dispatch_;
    const std::shared_ptr<platform::MetadataIndex> index_;

    mutable std::mutex mutex_; // guards what follows
    std::weak_ptr<NSMetadataQuery> query_;
    Wanted wanted_;
    Run run_;
    Generation generation_ = 0; // of the search; what an earlier one tells does not count
    bool isStarted_ = false;
    bool isGathering_ = false;
    std::size_t telling_ = 0; // calls of the search that are under way
    std::size_t disabled_ = 0;
    platform::MetadataResults results_;
    std::optional<platform::MetadataResults> pending_; // came while updates were disabled
};

} // namespace qk
