// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/MetadataItemQuery.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qk {
namespace {

struct Registration {
    NSString name;
    NSString selector;
};

const std::vector<Registration>& registrations() {
    static const auto& both = *new std::vector<Registration>{
        {NSMetadataQueryDidFinishGatheringNotification, "didFinishGatheringNotification:"},
        {NSMetadataQueryDidUpdateNotification, "didUpdateNotification:"}};
    return both;
}

} // namespace

const ClassDescription& MetadataItemQuery::describedClass() {
    using Self = MetadataItemQuery;
    static const ClassDescription& description =
        ClassBuilder<Self>("MetadataItemQuery", NSObject::describedClass())
            .property("metadataQuery", &Self::metadataQuery, &Self::setMetadataQuery)
            .property("resultItems", &Self::resultItems, &Self::setResultItems)
            .property("maximalNumberOfResultItems", &Self::maximalNumberOfResultItems,
                      &Self::setMaximalNumberOfResultItems)
            .property("started", &Self::isStarted)
            .property("maximalNumberOfResults", &Self::maximalNumberOfResults)
            .method("start", &Self::start)
            .method("stop", &Self::stop)
            .method("isStarted", &Self::isStarted)
            .method("registerNotifications", &Self::registerNotifications)
            .method("deregisterNotifications", &Self::deregisterNotifications)
            .method("didFinishGatheringNotification:", &Self::didFinishGatheringNotification)
            .method("didUpdateNotification:", &Self::didUpdateNotification)
            .method("processQuery:", &Self::processQuery)
            .method("handleQueryUpdates:", &Self::handleQueryUpdates)
            .build();
    return description;
}

const ClassDescription& MetadataItemQuery::classDescription() const {
    return describedClass();
}

MetadataItemQuery::MetadataItemQuery(const std::shared_ptr<const platform::Services>& services,
                                     std::uint64_t maximalNumberOfResultItems)
    : services_(services),
      metadataQuery_(NSMetadataQuery::create(*services)),
      maximalNumberOfResultItems_(maximalNumberOfResultItems) {}

std::shared_ptr<MetadataItemQuery> MetadataItemQuery::metadataItemQueryWithSearchScopes(
    const NSArray& scopes, const std::shared_ptr<const NSPredicate>& predicate,
    const std::vector<NSSortDescriptor>& sortDescriptors, std::uint64_t maximalNumberOfResults) {
    return initWithSearchScopes(scopes, predicate, sortDescriptors, maximalNumberOfResults);
}

std::shared_ptr<MetadataItemQuery>
MetadataItemQuery::initWithSearchScopes(const NSArray& scopes, const std::shared_ptr<const NSPredicate>& predicate,
                                        const std::vector<NSSortDescriptor>& sortDescriptors,
                                        std::uint64_t maximalNumberOfResults) {
    return initWithSearchScopes(platform::services(), scopes, predicate, sortDescriptors, maximalNumberOfResults);
}

std::shared_ptr<MetadataItemQuery>
MetadataItemQuery::initWithSearchScopes(const std::shared_ptr<const platform::Services>& services,
                                        const NSArray& scopes, const std::shared_ptr<const NSPredicate>& predicate,
                                        const std::vector<NSSortDescriptor>& sortDescriptors,
                                        std::uint64_t maximalNumberOfResults) {
    std::shared_ptr<MetadataItemQuery> query(new MetadataItemQuery(services, maximalNumberOfResults));
    query->metadataQuery_->setSearchScopes(scopes);
    query->metadataQuery_->setPredicate(predicate);
    query->metadataQuery_->setSortDescriptors(sortDescriptors);
    return query;
}

MetadataItemQuery::~MetadataItemQuery() {
    stop();
    if (resultItems_ != nullptr) {
        resultItems_->removeAllObjects();
    }
}

void MetadataItemQuery::start() {
    const auto query = metadataQuery();
    if (query == nullptr) {
        return;
    }
    const std::scoped_lock lock(query->monitor());
    if (!query->isStarted()) {
        registerNotifications();
        limitResults(*query);
        query->startQuery();
    }
}

void MetadataItemQuery::stop() {
    const auto query = metadataQuery();
    if (query == nullptr) {
        return;
    }
    const std::scoped_lock lock(query->monitor());
    if (query->isStarted()) {
        query->stopQuery();
        deregisterNotifications();
    }
}

bool MetadataItemQuery::isStarted() const {
    const auto query = metadataQuery();
    return query != nullptr && query->isStarted();
}

std::set<NSString> MetadataItemQuery::keyPathsForValuesAffectingStarted() {
    return {"self.query.isStarted"};
}

void MetadataItemQuery::registerNotifications() {
    const auto query = metadataQuery();
    for (const auto& [name, selector] : registrations()) {
        NSNotificationCenter::defaultCenter().addObserver(*this, selector, name, query.get());
    }
}

void MetadataItemQuery::deregisterNotifications() {
    const auto query = metadataQuery();
    for (const auto& [name, selector] : registrations()) {
        NSNotificationCenter::defaultCenter().removeObserver(*this, name, query.get());
    }
}

void MetadataItemQuery::didFinishGatheringNotification(const std::shared_ptr<NSNotification>& notification) {
    if (notification != nullptr) {
        processQuery(std::dynamic_pointer_cast<NSMetadataQuery>(notification->object()));
    }
}

void MetadataItemQuery::didUpdateNotification(const std::shared_ptr<NSNotification>& notification) {
    didFinishGatheringNotification(notification);
}

void MetadataItemQuery::processQuery(const std::shared_ptr<NSMetadataQuery>& query) {
    if (query == nullptr) {
        return;
    }
    query->disableUpdates();
    auto self = std::static_pointer_cast<MetadataItemQuery>(shared_from_this());
    services_->dispatch->asyncOnBackgroundQueue([self = std::move(self), query] {
        self->handleQueryUpdates(query);
        query->enableUpdates();
    });
}

void MetadataItemQuery::handleQueryUpdates(const std::shared_ptr<NSMetadataQuery>& query) {
    const auto items = resultItems();
    if (query == nullptr || items == nullptr) {
        return;
    }
    items->removeAllObjects();
    const std::uint64_t count = std::min<std::uint64_t>(query->resultCount(), maximalNumberOfResultItems());
    for (std::uint64_t index = 0; index < count; ++index) {
        items->addObject(query->resultAtIndex(static_cast<std::size_t>(index)));
    }
    if (const Callback called = callback()) {
        called(items);
    }
}

void MetadataItemQuery::limitResults(NSMetadataQuery& query) const {
    constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max();
    // 0 would be no limit to the index.
    query.setResultLimit(static_cast<std::size_t>(std::clamp<std::uint64_t>(maximalNumberOfResultItems(), 1, kMost)));
}

std::shared_ptr<NSMetadataQuery> MetadataItemQuery::metadataQuery() const {
    const std::scoped_lock lock(mutex_);
    return metadataQuery_;
}

void MetadataItemQuery::setMetadataQuery(std::shared_ptr<NSMetadataQuery> query) {
    const std::scoped_lock lock(mutex_);
    metadataQuery_.swap(query); // the former one is given back without the lock
}

std::shared_ptr<MetadataItemSet> MetadataItemQuery::resultItems() const {
    const std::scoped_lock lock(mutex_);
    return resultItems_;
}

void MetadataItemQuery::setResultItems(std::shared_ptr<MetadataItemSet> items) {
    const std::scoped_lock lock(mutex_);
    resultItems_.swap(items);
}

std::uint64_t MetadataItemQuery::maximalNumberOfResultItems() const {
    const std::scoped_lock lock(mutex_);
    return maximalNumberOfResultItems_;
}

void MetadataItemQuery::setMaximalNumberOfResultItems(std::uint64_t number) {
    {
        const std::scoped_lock lock(mutex_);
        maximalNumberOfResultItems_ = number;
    }
    if (const auto query = metadataQuery(); query != nullptr && query->isStarted()) {
        limitResults(*query);
    }
}

MetadataItemQuery::Callback MetadataItemQuery::callback() const {
    const std::scoped_lock lock(mutex_);
    return callback_;
}

void MetadataItemQuery::setCallback(Callback callback) {
    const std::scoped_lock lock(mutex_);
    callback_.swap(callback);
}

} // namespace qk
