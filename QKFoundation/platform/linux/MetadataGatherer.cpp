// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/MetadataGatherer.h"

#include "QKFoundation/platform/linux/FolderWalk.h"
#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <algorithm>
#include <map>
#include <span>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kReserve = 64;
constexpr FSEventStreamEventFlags kLost =
    kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagUserDropped | kFSEventStreamEventFlagKernelDropped;
// After these a folder may hold other things than before, without a word about each.
constexpr FSEventStreamEventFlags kStructure = kLost | kFSEventStreamEventFlagItemCreated |
                                               kFSEventStreamEventFlagItemRemoved | kFSEventStreamEventFlagItemRenamed |
                                               kFSEventStreamEventFlagItemInodeMetaMod;

bool asksForTypesOnly(const NSPredicate& predicate) {
    return std::ranges::all_of(predicate.keyPaths(), [](const NSString& key) {
        return key == kMDItemContentType || key == kMDItemContentTypeTree;
    });
}

// Whether `paths` has a folder that `path` lies below.
template <typename Paths>
bool holdsAncestor(const Paths& paths, std::string_view path) {
    for (std::size_t slash = path.rfind('/'); slash != std::string_view::npos && slash != 0;
         slash = path.rfind('/', slash - 1)) {
        if (paths.contains(path.substr(0, slash))) {
            return true;
        }
    }
    return false;
}

using TextSet = std::unordered_set<std::string, TextHash, std::equal_to<>>;

} // namespace

// What an update takes out and looks at anew.
struct MetadataGatherer::Revision {
    std::map<std::string, bool> paths; // to be looked at; whether what is below them is, too
    TextSet emptied;                   // folders of which nothing counts that was known below them
    std::vector<std::string> walks;    // folders to be walked through
};

MetadataGatherer::MetadataGatherer(const MetadataSearch& search, MetadataPlaces places,
                                   std::shared_ptr<Dispatch> dispatch, std::shared_ptr<const UniformTypes> types)
    : predicate_(search.predicate),
      limit_(search.limit),
      most_(search.limit == 0 ? 0 : search.limit + std::max(search.limit, kReserve)),
      attributes_(places.root),
      order_(search.sortDescriptors, attributes_),
      scopes_(places.scopes),
      dispatch_(std::move(dispatch)),
      typeDecides_(asksForTypesOnly(*search.predicate)),
      types_(std::move(types),
             [this](const MetadataContentType& type) {
                 const MetadataCandidate example{.path = {}, .type = &type};
                 return !typeDecides_ || evaluate(example);
             }),
      usedDates_(std::move(places.recentlyUsedList), std::move(places.root)) {}

bool MetadataGatherer::evaluate(const MetadataCandidate& candidate) const {
    try {
        return predicate_->evaluateWithLookup(
            [&](const NSString& name) { return attributes_.valueOf(candidate, name); });
    } catch (const NSException&) {
        return false; // a condition that cannot be put to this file is not met by it
    }
}

// What is hidden is no result, but the folder that it is in may be one.
bool MetadataGatherer::isConcernedBy(const std::string& path) const {
    return scopes_.hold(path) || scopes_.areAtOrBelow(path) || scopes_.hold(folderAbove(path));
}

std::optional<MetadataResults> MetadataGatherer::gather(const Progress& progress) {
    usedDates_.read();
    std::vector<MetadataCollector> parts = walk(scopes_.folders(), std::nullopt, progress);
    selection_ = MetadataCollector(order_, most_).select(parts);
    return results();
}

std::optional<MetadataResults> MetadataGatherer::update(const MetadataChanges& changes) {
    Revision revision;
    if (changes.isEverything || !takeChanges(changes, revision)) {
        return gather(nullptr);
    }
    for (std::string& path : usedDates_.read()) {
        if (scopes_.hold(path)) {
            revision.paths.try_emplace(std::move(path), false);
        }
    }
    revise(revision);
    if (selection_.horizon.has_value() && selection_.best.size() < limit_) {
        return gather(nullptr);
    }
    return results();
}

// False when a scope itself is another one now.
bool MetadataGatherer::takeChanges(const MetadataChanges& changes, Revision& revision) const {
    for (const auto& [path, flags] : changes.paths) {
        const bool isStructure = (flags & kStructure) != 0;
        if (scopes_.areAtOrBelow(path)) {
            if (isStructure) {
                return false;
            }
            continue;
        }
        // The folder around it was modified by that, which nobody tells; also when the item itself is hidden.
        if (std::string parent = folderAbove(path); isStructure && scopes_.hold(parent)) {
            revision.paths.try_emplace(std::move(parent), false);
        }
        if (!scopes_.hold(path)) {
            continue;
        }
        if (isStructure) {
            revision.paths[path] = true;
            revision.emptied.insert(path);
        } else {
            revision.paths.try_emplace(path, false);
        }
    }
    return true;
}

void MetadataGatherer::examine(const std::string& path, bool isSubtree, MetadataCollector& collector,
                               Revision& revision) {
    const std::optional<FileFacts> facts = fileFacts(path);
    if (!facts.has_value()) {
        return;
    }
    if (isSubtree && facts->kind == FileKind::folder) {
        revision.walks.push_back(path);
    }
    const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
    MetadataCandidate candidate{.path = path,
                                .modified = facts->dates.modified,
                                .used = usedDates_.dateOf(path).value_or(facts->dates.accessed),
                                .type = &types_.typeOf(name, facts->kind)};
    if (meets(candidate)) {
        collector.take(std::move(candidate));
    }
}

void MetadataGatherer::revise(Revision& revision) {
    MetadataCollector collector(order_, most_, std::move(selection_.horizon));
    for (MetadataCandidate& candidate : selection_.best) {
        if (!revision.paths.contains(candidate.path) && !holdsAncestor(revision.emptied, candidate.path)) {
            collector.take(std::move(candidate));
        }
    }
    TextSet walked;
    for (const auto& [path, isSubtree] : revision.paths) { // a folder comes before what is in it
        if (!holdsAncestor(walked, path)) {
            const std::size_t before = revision.walks.size();
            examine(path, isSubtree, collector, revision);
            if (revision.walks.size() != before) {
                walked.insert(path);
            }
        }
    }
    std::vector<MetadataCollector> parts;
    if (!revision.walks.empty()) {
        parts = walk(std::move(revision.walks), collector.horizon(), nullptr);
    }
    selection_ = collector.select(parts);
}

std::optional<MetadataResults> MetadataGatherer::results() {
    const std::size_t count = limit_ == 0 ? selection_.best.size() : std::min(limit_, selection_.best.size());
    const std::span<const MetadataCandidate> present(selection_.best.data(), count);
    if (hasResults_ && std::ranges::equal(present, told_)) {
        return std::nullopt;
    }
    std::unordered_map<std::string_view, std::size_t> known;
    for (std::size_t index = 0; index < told_.size(); ++index) {
        known.emplace(told_[index].path, index);
    }
    MetadataResults items;
    items.reserve(count);
    for (const MetadataCandidate& candidate : present) {
        const auto before = known.find(candidate.path);
        const bool isSame = before != known.end() && told_[before->second] == candidate;
        items.push_back(isSame ? toldItems_[before->second]
                               : NSMetadataItem::initWithAttributes(attributes_.allOf(candidate)));
    }
    hasResults_ = true;
    told_.assign(present.begin(), present.end());
    toldItems_ = items;
    return items;
}

} // namespace qk::platform
