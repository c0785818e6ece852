// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/MetadataCandidates.h"
#include "QKFoundation/platform/linux/MetadataContentTypes.h"
#include "QKFoundation/platform/linux/MetadataScopes.h"
#include "QKFoundation/platform/linux/MetadataUsedDates.h"
#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/services/FSEvents.h"
#include "QKFoundation/platform/services/MetadataIndex.h"
#include "QKFoundation/platform/services/UniformTypes.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qk::platform {

/// What may have become different.
struct MetadataChanges {
    bool isEverything = false;
    bool hasUsedDates = false; ///< the toolkits' list of used files
    TextMap<FSEventStreamEventFlags> paths;

    [[nodiscard]] bool isEmpty() const { return !isEverything && !hasUsedDates && paths.empty(); }
};

/// Where a search looks.
struct MetadataPlaces {
    std::vector<std::string> scopes;
    std::string recentlyUsedList;
    std::string root; ///< what stands before the paths that are told: "" or a folder without a trailing "/"
};

/// What one search knows: its first results, and some more to take the places of those that go.
///
/// Threads: `cancel` and what is const anywhere; `gather` and `update` one at a time, on a thread that may be kept busy
/// for long.
class MetadataGatherer : public std::enable_shared_from_this<MetadataGatherer> {
public:
    using Progress = std::function<void(std::size_t examined)>;

    MetadataGatherer(const MetadataSearch& search, MetadataPlaces places, std::shared_ptr<Dispatch> dispatch,
                     std::shared_ptr<const UniformTypes> types);

    [[nodiscard]] const MetadataScopes& scopes() const noexcept { return scopes_; }

    /// Whether a change of what lies at `path` may be one of the results.
    [[nodiscard]] bool isConcernedBy(const std::string& path) const;

    /// Looks through all scopes, helped by a second background task where that pays. The results; nothing when they
    /// are what this or `update` returned last. `progress`, which may be empty, is called on any thread.
    [[nodiscard]] std::optional<MetadataResults> gather(const Progress& progress);

    /// Looks at what has changed, and through all scopes when no results are left to take the places of those that
    /// went. As `gather`.
    [[nodiscard]] std::optional<MetadataResults> update(const MetadataChanges& changes);

    /// Ends what runs, soon, and what it returns means nothing.
    void cancel() noexcept { isCancelled_ = true; }
    [[nodiscard]] bool isCancelled() const noexcept { return isCancelled_; }

private:
    class Visitor;
    struct Walk;
    struct Revision;

    [[nodiscard]] bool evaluate(const MetadataCandidate& candidate) const;
    [[nodiscard]] bool meets(const MetadataCandidate& candidate) const {
        return typeDecides_ ? candidate.type->isWanted : evaluate(candidate);
    }
    std::vector<MetadataCollector> walk(std::vector<std::string> roots, std::optional<MetadataCandidate> horizon,
                                        const Progress& progress);
    [[nodiscard]] bool takeChanges(const MetadataChanges& changes, Revision& revision) const;
    void examine(const std::string& path, bool isSubtree, MetadataCollector& collector, Revision& revision);
    void revise(Revision& revision);
    [[nodiscard]] std::optional<MetadataResults> results();

    const std::shared_ptr<const NSPredicate> predicate_;
    const std::size_t limit_;
    const std::size_t most_; // with the reserve; 0: all
    const MetadataAttributes attributes_;
    const MetadataOrder order_;
    const MetadataScopes scopes_;
    const std::shared_ptr<Dispatch> dispatch_;
    const bool typeDecides_; // the predicate asks for nothing but the content type
    MetadataContentTypes types_;
    std::atomic<bool> isCancelled_ = false;

    MetadataUsedDates usedDates_;
    MetadataSelection selection_;
    bool hasResults_ = false;
    std::vector<MetadataCandidate> told_;
    MetadataResults toldItems_;
};

} // namespace qk::platform
