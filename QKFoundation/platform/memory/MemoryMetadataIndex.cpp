// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryMetadataIndex.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace qk::platform::memory {
namespace {

const NSString& pathKey() {
    static const NSString& key = *new NSString(NSMetadataItemPathKey);
    return key;
}

bool isBelow(const NSString& path, const NSString& scope) {
    if (!scope.isAbsolutePath()) {
        return false;
    }
    const NSString folder = scope.stringByAppendingPathComponent(NSString()); // without a trailing "/"
    return folder == "/" ? path.isAbsolutePath() && path != folder : path.hasPrefix(folder + "/");
}

bool meets(const NSMetadataItem& item, const MetadataSearch& search) {
    if (!search.scopes.empty()) {
        const auto* path = item.attributes().get<NSString>(pathKey());
        if (path == nullptr ||
            std::ranges::none_of(search.scopes, [&](const NSString& scope) { return isBelow(*path, scope); })) {
            return false;
        }
    }
    return search.predicate->evaluateWithLookup([&](const NSString& key) { return item.valueForAttribute(key); });
}

bool comesBefore(const NSMetadataItem& left, const NSMetadataItem& right,
                 const std::vector<NSSortDescriptor>& descriptors) {
    for (const NSSortDescriptor& descriptor : descriptors) {
        const NSComparisonResult order = descriptor.compareValues(left.valueForAttribute(descriptor.key()),
                                                                  right.valueForAttribute(descriptor.key()));
        if (order != NSComparisonResult::NSOrderedSame) {
            return order == NSComparisonResult::NSOrderedAscending;
        }
    }
    return false;
}

MetadataResults found(const MetadataResults& items, const MetadataSearch& search) {
    MetadataResults results;
    std::ranges::copy_if(items, std::back_inserter(results), [&](const auto& item) { return meets(*item, search); });
    std::ranges::stable_sort(results, [&](const auto& left, const auto& right) {
        return comesBefore(*left, *right, search.sortDescriptors);
    });
    if (search.limit != 0 && results.size() > search.limit) {
        results.resize(search.limit);
    }
    return results;
}

} // namespace

// One search. What it told last belongs to the thread that began it.
class MemoryMetadataIndex::Search final : public std::enable_shared_from_this<Search> {
public:
    Search(MetadataSearch search, MetadataListener listener, std::shared_ptr<RunLoop> runLoop,
           std::weak_ptr<Contents> contents)
        : search_(std::move(search)),
          listener_(std::move(listener)),
          runLoop_(std::move(runLoop)),
          contents_(std::move(contents)) {}

    void schedule() {
        runLoop_->perform([weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->look();
            }
        });
    }

private:
    void look();

    const MetadataSearch search_;
    const MetadataListener listener_;
    const std::shared_ptr<RunLoop> runLoop_;
    const std::weak_ptr<Contents> contents_;
    bool hasGathered_ = false;
    MetadataResults told_;
};

class MemoryMetadataIndex::Run final : public MetadataSearchRun {
public:
    explicit Run(std::shared_ptr<Search> search) : search_(std::move(search)) {}

private:
    const std::shared_ptr<Search> search_; // everybody else holds it weakly
};

struct MemoryMetadataIndex::Contents {
    std::mutex mutex; // guards what follows
    MetadataResults items;
    std::vector<std::weak_ptr<Search>> searches;

    [[nodiscard]] std::vector<std::shared_ptr<Search>> running() {
        std::erase_if(searches, [](const std::weak_ptr<Search>& each) { return each.expired(); });
        std::vector<std::shared_ptr<Search>> result;
        for (const std::weak_ptr<Search>& each : searches) {
            if (auto search = each.lock()) {
                result.push_back(std::move(search));
            }
        }
        return result;
    }
};

void MemoryMetadataIndex::Search::look() {
    const auto contents = contents_.lock();
    if (contents == nullptr) {
        return;
    }
    MetadataResults items;
    {
        const std::scoped_lock lock(contents->mutex);
        items = contents->items;
    }
    MetadataResults results = found(items, search_);
    const bool isFirst = !std::exchange(hasGathered_, true);
    if (isFirst && listener_.progress) {
        listener_.progress(items.size());
    }
    if (isFirst || results != told_) {
        told_ = results;
        listener_.deliver(std::move(results));
    }
}

MemoryMetadataIndex::MemoryMetadataIndex(std::shared_ptr<Dispatch> dispatch)
    : dispatch_(std::move(dispatch)), contents_(std::make_shared<Contents>()) {}

MemoryMetadataIndex::~MemoryMetadataIndex() = default;

void MemoryMetadataIndex::addItem(const NSDictionary& attributes) {
    change(attributes, false);
}

void MemoryMetadataIndex::updateItem(const NSDictionary& attributes) {
    change(attributes, true);
}

void MemoryMetadataIndex::change(const NSDictionary& attributes, bool replaces) {
    auto item = NSMetadataItem::initWithAttributes(attributes);
    const auto* path = replaces ? attributes.get<NSString>(pathKey()) : nullptr;
    std::vector<std::shared_ptr<Search>> searches;
    {
        const std::scoped_lock lock(contents_->mutex);
        const auto former = std::ranges::find_if(contents_->items, [&](const auto& each) {
            const auto* own = each->attributes().template get<NSString>(pathKey());
            return path != nullptr && own != nullptr && *own == *path;
        });
        if (former == contents_->items.end()) {
            contents_->items.push_back(std::move(item));
        } else if ((*former)->attributes() != attributes) {
            former->swap(item);
        } else {
            return;
        }
        searches = contents_->running();
    }
    for (const auto& search : searches) {
        search->schedule();
    }
}

void MemoryMetadataIndex::removeItem(const NSString& path) {
    std::vector<std::shared_ptr<Search>> searches;
    {
        const std::scoped_lock lock(contents_->mutex);
        std::erase_if(contents_->items, [&](const auto& each) {
            const auto* own = each->attributes().template get<NSString>(pathKey());
            return own != nullptr && *own == path;
        });
        searches = contents_->running();
    }
    for (const auto& search : searches) {
        search->schedule();
    }
}

std::size_t MemoryMetadataIndex::runningSearches() const {
    const std::scoped_lock lock(contents_->mutex);
    return contents_->running().size();
}

std::unique_ptr<MetadataSearchRun> MemoryMetadataIndex::begin(const MetadataSearch& search, MetadataListener listener) {
    auto begun = std::make_shared<Search>(search, std::move(listener), dispatch_->currentRunLoop(), contents_);
    {
        const std::scoped_lock lock(contents_->mutex);
        contents_->searches.push_back(begun);
    }
    begun->schedule();
    return std::make_unique<Run>(std::move(begun));
}

} // namespace qk::platform::memory
