// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/NSPredicate.h"
#include "QKFoundation/platform/objects/NSSortDescriptor.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qk::platform {

// Attributes of the items of the index.
inline constexpr char NSMetadataItemPathKey[] = "kMDItemPath";                             ///< text
inline constexpr char NSMetadataItemDisplayNameKey[] = "kMDItemDisplayName";               ///< text
inline constexpr char kMDItemContentType[] = "kMDItemContentType";                         ///< text
inline constexpr char kMDItemContentTypeTree[] = "kMDItemContentTypeTree";                 ///< array of texts
inline constexpr char kMDItemContentModificationDate[] = "kMDItemContentModificationDate"; ///< date
inline constexpr char kMDItemLastUsedDate[] = "kMDItemLastUsedDate";                       ///< date

} // namespace qk::platform

namespace qk {

/// `NSMetadataItem`: what the index knew about one file when it was asked. Immutable. Threads: any, at the same time.
class QK_EXPORT NSMetadataItem : public NSObject {
public:
    /// An item with these attributes, by their names.
    [[nodiscard]] static std::shared_ptr<NSMetadataItem> initWithAttributes(NSDictionary attributes);

    /// `valueForAttribute:`. Nothing when it has none of that name.
    [[nodiscard]] std::optional<Value> valueForAttribute(const NSString& name) const;

    /// The attributes, by their names.
    [[nodiscard]] const NSDictionary& attributes() const noexcept { return attributes_; }

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

private:
    explicit NSMetadataItem(NSDictionary attributes);

    NSDictionary attributes_;
};

} // namespace qk

namespace qk::platform {

/// What is looked for.
struct MetadataSearch {
    std::vector<NSString> scopes; ///< folders, with all that is below them; none: everywhere that the index knows
    std::shared_ptr<const NSPredicate> predicate; ///< over attributes; never null
    std::vector<NSSortDescriptor> sortDescriptors;
    std::size_t limit = 0; ///< how many of the first results are wanted; 0: all of them
};

using MetadataResults = std::vector<std::shared_ptr<NSMetadataItem>>;

/// What is told of a search, on the run loop of the thread that began it and never before `begin` has returned.
struct MetadataListener {
    /// How many items have been looked at while the index gathers; now and then, may be empty.
    std::function<void(std::size_t examined)> progress;
    /// The results, in the order of the sort descriptors: first when the gathering is finished, then each time when
    /// they, or what an item of them tells, have changed.
    std::function<void(MetadataResults results)> deliver;
};

/// A search that runs; destroying it, on the thread that began it but not inside what it tells, ends it and nothing is
/// told afterwards.
class QK_EXPORT MetadataSearchRun {
public:
    MetadataSearchRun() = default;
    MetadataSearchRun(const MetadataSearchRun&) = delete;
    MetadataSearchRun& operator=(const MetadataSearchRun&) = delete;
    virtual ~MetadataSearchRun();
};

/// The index of the metadata of files. Threads: any, at the same time.
class QK_EXPORT MetadataIndex {
public:
    MetadataIndex() = default;
    MetadataIndex(const MetadataIndex&) = delete;
    MetadataIndex& operator=(const MetadataIndex&) = delete;
    virtual ~MetadataIndex();

    /// Begins to gather, and goes on with what changes. Never null; where nothing can be searched, nothing is found.
    [[nodiscard]] virtual std::unique_ptr<MetadataSearchRun> begin(const MetadataSearch& search,
                                                                   MetadataListener listener) = 0;
};

} // namespace qk::platform
