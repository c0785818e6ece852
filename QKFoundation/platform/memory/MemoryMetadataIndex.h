// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/services/MetadataIndex.h"

#include <cstddef>
#include <memory>

namespace qk::platform::memory {

/// An index with the items that it was told of:
///
///     machine.metadataIndex.addItem({{NSMetadataItemPathKey, "/home/anna/Documents/letter"},
///                                    {kMDItemContentTypeTree, NSArray{"public.content", "public.item"}}});
///     machine.dispatch.drain(); // searches that run find it now
///
/// Searches gather, and tell what has changed, when the run loop of the thread that began them is drained. An item is
/// below a scope when its path is; one without a path is found by a search of everything alone. Items that no sort
/// descriptor tells apart keep the order in which they were added. Threads: any, at the same time.
class QK_EXPORT MemoryMetadataIndex final : public MetadataIndex {
public:
    explicit MemoryMetadataIndex(std::shared_ptr<Dispatch> dispatch);
    MemoryMetadataIndex(const MemoryMetadataIndex&) = delete;
    MemoryMetadataIndex& operator=(const MemoryMetadataIndex&) = delete;
    ~MemoryMetadataIndex() override;

    /// There is an item with these attributes, behind those that were added before.
    void addItem(const NSDictionary& attributes);

    /// The item with the path that `attributes` hold has these attributes from now on, at its place. Adds one when
    /// there is none.
    void updateItem(const NSDictionary& attributes);

    /// The item with that path is gone.
    void removeItem(const NSString& path);

    /// How many searches run.
    [[nodiscard]] std::size_t runningSearches() const;

    [[nodiscard]] std::unique_ptr<MetadataSearchRun> begin(const MetadataSearch& search,
                                                           MetadataListener listener) override;

private:
    class Search;
    class Run;
    struct Contents;

    void change(const NSDictionary& attributes, bool replaces);

    const std::shared_ptr<Dispatch> dispatch_;
    const std::shared_ptr<Contents> contents_; // outlives the index as long as a search runs
};

} // namespace qk::platform::memory
