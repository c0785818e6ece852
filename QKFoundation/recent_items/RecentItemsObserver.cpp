// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/services/Services.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace qk {
namespace {

using namespace platform;

constexpr std::uint64_t kQueriedItems = 40;
constexpr std::size_t kLatestItems = 20;
constexpr double kNoTimeout = 0;

const NSArray& contentTypes() {
    static const NSArray& types =
        *new NSArray{"public.content", "public.composite-content", "public.archive", "public.folder"};
    return types;
}

const std::vector<NSSortDescriptor>& latestFirst() {
    static const auto& descriptors = *new std::vector<NSSortDescriptor>{{"latestInteractionDate", false}};
    return descriptors;
}

// Events are told with paths without links; a home folder behind one would never be recognised in them.
NSString homePath(const FileManager& files) {
    const NSString home = files.homeDirectory();
    const std::optional<NSURL> url = NSURL::fileURLWithPath(home, true);
    const auto values = url.has_value() ? files.resourceValuesForKeys(*url, {NSURLCanonicalPathKey}) : std::nullopt;
    const auto* canonical = values.has_value() ? values->get<NSString>(NSURLCanonicalPathKey) : nullptr;
    return canonical != nullptr ? *canonical : home.stringByAppendingPathComponent(NSString());
}

bool isTrue(const NSDictionary& values, const NSString& key) {
    const auto* number = values.get<NSNumber>(key);
    return number != nullptr && number->boolValue();
}

} // namespace

const ClassDescription& RecentItemsObserver::describedClass() {
    using Self = RecentItemsObserver;
    static const ClassDescription& description =
        ClassBuilder<Self>("RecentItemsObserver", NSObject::describedClass())
            .protocol(FileSystemObserverDelegate::describedProtocol())
            .property("userHomePath", &Self::userHomePath, &Self::setUserHomePath)
            .property("metadataQuery", &Self::metadataQuery, &Self::setMetadataQuery)
            .property("recentItems", &Self::recentItems)
            .property("userHomeObserver", &Self::userHomeObserver, &Self::setUserHomeObserver)
            .property("observing", &Self::isObserving)
            .method("startObserving", &Self::startObserving)
            .method("stopObserving", &Self::stopObserving)
            .method("shutdown", &Self::shutdown)
            .method("isObserving", &Self::isObserving)
            .method("updateRecentItem:", &Self::updateRecentItem)
            .method("recentItemForDisplayName:", &Self::recentItemForDisplayName)
            .method("latestRecentItems", &Self::latestRecentItems)
            .method("createFileSystemObserver", &Self::createFileSystemObserver)
            .method("createQuery", &Self::createQuery)
            .method("createSearchPaths", &Self::createSearchPaths)
            .build();
    return description;
}

const ClassDescription& RecentItemsObserver::classDescription() const {
    return describedClass();
}

RecentItemsObserver::RecentItemsObserver(std::shared_ptr<const Services> services) : services_(std::move(services)) {}

std::shared_ptr<RecentItemsObserver> RecentItemsObserver::recentItemsObserver() {
    return init();
}

std::shared_ptr<RecentItemsObserver> RecentItemsObserver::init() {
    return init(services());
}

std::shared_ptr<RecentItemsObserver> RecentItemsObserver::init(const std::shared_ptr<const Services>& services) {
    std::shared_ptr<RecentItemsObserver> observer(new RecentItemsObserver(services));
    observer->userHomePath_ = homePath(*services->fileManager);
    observer->createQuery();
    observer->createFileSystemObserver();
    return observer;
}

RecentItemsObserver::~RecentItemsObserver() {
    stopObserving();
}

void RecentItemsObserver::startObserving() {
    if (const auto query = metadataQuery(); query != nullptr && !query->isStarted()) {
        query->start();
    }
}

void RecentItemsObserver::stopObserving() {
    if (const auto query = metadataQuery()) {
        query->stop();
    }
}

void RecentItemsObserver::shutdown() {
    const auto self = shared_from_this(); // which the watcher may be the last to hold
    if (userHomeObserver_ != nullptr) {
        userHomeObserver_->stopObserving();
        userHomeObserver_->setDelegate(nullptr);
    }
}

void RecentItemsObserver::fileSystemObserver(FileSystemObserver& /*observer*/,
                                             const NSArray& /*didObserveChangeInFiles*/, const NSArray& atURLs) {
    const bool isInHome = std::ranges::any_of(atURLs.values(), [this](const Value& folder) {
        const auto* url = folder.as<NSURL>();
        return url != nullptr && url->path() == userHomePath_;
    });
    if (!isInHome) {
        return;
    }
    const auto query = metadataQuery();
    const bool wasStarted = query != nullptr && query->isStarted();
    stopObserving();
    createQuery();
    if (wasStarted) {
        startObserving();
    }
}

void RecentItemsObserver::updateResultsWithMetadataItems(MetadataItems items) {
    const Items recent = recentItemsForMetadataItems(items);
    {
        const std::scoped_lock lock(mutex_); // a delivery of an earlier query may be under way
        removeOutdatedItemsThatAreNotPresentInItems(recent);
        updateRecentItems(recent);
    }
    if (callback() == nullptr) {
        return;
    }
    auto self = std::static_pointer_cast<RecentItemsObserver>(shared_from_this());
    services_->dispatch->asyncOnMainQueue([self = std::move(self)] {
        if (const Callback called = self->callback()) {
            called(self->latestRecentItems());
        }
    });
}

RecentItemsObserver::Items RecentItemsObserver::recentItemsForMetadataItems(MetadataItems items) const {
    static const NSString& pathKey = *new NSString(NSMetadataItemPathKey);
    Items recent;
    recent.reserve(items.size());
    for (const std::shared_ptr<NSMetadataItem>& item : items) {
        const auto path = item != nullptr ? item->valueForAttribute(pathKey) : std::nullopt;
        if (const auto* text = path.has_value() ? path->as<NSString>() : nullptr) {
            recent.push_back(RecentItem::initWithPath(services_, *text));
        }
    }
    return recent;
}

void RecentItemsObserver::removeOutdatedItemsThatAreNotPresentInItems(const Items& items) {
    const std::unordered_set<Value> present(items.begin(), items.end());
    const std::scoped_lock lock(mutex_);
    std::erase_if(recentItems_, [&](const auto& each) { return !present.contains(Value(each)); });
}

void RecentItemsObserver::updateRecentItems(const Items& items) {
    const std::scoped_lock lock(mutex_);
    for (const std::shared_ptr<RecentItem>& item : items) {
        if (std::ranges::any_of(recentItems_, [&](const auto& each) { return each->isEqual(item); })) {
            updateRecentItem(item);
        } else if (item != nullptr) {
            recentItems_.push_back(item);
        }
    }
}

void RecentItemsObserver::updateRecentItem(const std::shared_ptr<RecentItem>& item) {
    const std::scoped_lock lock(mutex_);
    const auto existing = item != nullptr ? recentItemForDisplayName(item->displayName()) : nullptr;
    if (existing == nullptr || !existing->latestInteractionDate().has_value() ||
        !item->latestInteractionDate().has_value() ||
        !(*existing->latestInteractionDate() < *item->latestInteractionDate())) {
        return;
    }
    std::erase_if(recentItems_, [&](const auto& each) { return each->isEqual(existing); });
    recentItems_.push_back(item);
}

std::shared_ptr<RecentItem> RecentItemsObserver::recentItemForDisplayName(const std::optional<NSString>& name) const {
    const std::scoped_lock lock(mutex_);
    const auto found =
        std::ranges::find_if(recentItems_, [&](const auto& each) { return each->displayName() == name; });
    return found != recentItems_.end() ? *found : nullptr;
}

RecentItemsObserver::Items RecentItemsObserver::latestRecentItems() const {
    Items latest = sortedArrayUsingDescriptors(recentItems(), latestFirst());
    latest.resize(std::min(latest.size(), kLatestItems));
    return latest;
}

void RecentItemsObserver::createFileSystemObserver() {
    userHomeObserver_ = FileSystemObserver::initWithFilesToLookFor(
        services_, NSArray(), FileSystemObserverItemTypeDirectory, FileSystemObserverChangeCreated, kNoTimeout);
    userHomeObserver_->setDelegate(std::static_pointer_cast<RecentItemsObserver>(shared_from_this()));
    userHomeObserver_->startObservingAtPath(userHomePath_);
}

void RecentItemsObserver::createQuery() {
    const auto query = MetadataItemQuery::initWithSearchScopes(
        services_, createSearchPaths(), createPredicateWithUTIs(contentTypes()),
        {{kMDItemContentModificationDate, false}, {kMDItemLastUsedDate, false}}, kQueriedItems);
    const std::weak_ptr<RecentItemsObserver> weak = std::static_pointer_cast<RecentItemsObserver>(shared_from_this());
    query->setCallback([weak](const std::shared_ptr<MetadataItemSet>& items) {
        if (const auto self = weak.lock()) {
            self->updateResultsWithMetadataItems(items->allObjects());
        }
    });
    setMetadataQuery(query);
}

NSArray RecentItemsObserver::createSearchPaths() const {
    const std::optional<NSURL> home = NSURL::fileURLWithPath(userHomePath_, true);
    if (!home.has_value()) {
        return {};
    }
    const NSString library = userHomePath_.stringByAppendingPathComponent("Library");
    std::vector<Value> paths;
    const auto items = services_->fileManager->enumeratorAtURL(*home, {NSURLIsDirectoryKey, NSURLIsReadableKey},
                                                               NSDirectoryEnumerationSkipsSubdirectoryDescendants |
                                                                   NSDirectoryEnumerationSkipsPackageDescendants |
                                                                   NSDirectoryEnumerationSkipsHiddenFiles);
    for (const EnumeratedItem& item : items) {
        const std::optional<NSString> path = item.url.path();
        if (path.has_value() && isTrue(item.resourceValues, NSURLIsDirectoryKey) &&
            isTrue(item.resourceValues, NSURLIsReadableKey) && *path != library) {
            paths.emplace_back(*path);
        }
    }
    return NSArray(std::move(paths));
}

std::shared_ptr<const NSPredicate> RecentItemsObserver::createPredicateWithUTIs(const NSArray& identifiers) const {
    NSCompoundPredicate::Subpredicates predicates;
    for (const Value& identifier : identifiers) {
        predicates.push_back(NSPredicate::predicateWithFormat("kMDItemContentTypeTree == %@", {identifier}));
    }
    if (predicates.empty()) {
        return NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.item'");
    }
    return NSCompoundPredicate::orPredicateWithSubpredicates(std::move(predicates));
}

std::shared_ptr<MetadataItemQuery> RecentItemsObserver::metadataQuery() const {
    const std::scoped_lock lock(mutex_);
    return metadataQuery_;
}

void RecentItemsObserver::setMetadataQuery(std::shared_ptr<MetadataItemQuery> query) {
    const std::scoped_lock lock(mutex_);
    metadataQuery_.swap(query); // the former one ends without the lock
}

RecentItemsObserver::Items RecentItemsObserver::recentItems() const {
    const std::scoped_lock lock(mutex_);
    return recentItems_;
}

void RecentItemsObserver::setRecentItems(Items items) {
    const std::scoped_lock lock(mutex_);
    recentItems_.swap(items);
}

RecentItemsObserver::Callback RecentItemsObserver::callback() const {
    const std::scoped_lock lock(mutex_);
    return callback_;
}

void RecentItemsObserver::setCallback(Callback callback) {
    const std::scoped_lock lock(mutex_);
    callback_.swap(callback);
}

} // namespace qk
