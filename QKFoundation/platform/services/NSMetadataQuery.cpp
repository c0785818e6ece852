// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/NSMetadataQuery.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/internal/MetadataQueryState.h"

#include <utility>

namespace qk {

NSMetadataQuery::NSMetadataQuery(const platform::Services& services) : state_(std::make_shared<State>(services)) {}

std::shared_ptr<NSMetadataQuery> NSMetadataQuery::create() {
    return create(*platform::services());
}

std::shared_ptr<NSMetadataQuery> NSMetadataQuery::create(const platform::Services& services) {
    std::shared_ptr<NSMetadataQuery> query(new NSMetadataQuery(services));
    query->state_->setQuery(query);
    return query;
}

NSMetadataQuery::~NSMetadataQuery() {
    state_->stop();
}

NSArray NSMetadataQuery::searchScopes() const {
    return state_->wanted().scopes;
}

void NSMetadataQuery::setSearchScopes(const NSArray& scopes) {
    state_->change([&](State::Wanted& wanted) {
        wanted.scopes = scopes;
        return true;
    });
}

std::shared_ptr<const NSPredicate> NSMetadataQuery::predicate() const {
    return state_->wanted().predicate;
}

void NSMetadataQuery::setPredicate(std::shared_ptr<const NSPredicate> predicate) {
    state_->change([&](State::Wanted& wanted) {
        wanted.predicate.swap(predicate); // the former one is given back without the lock
        return true;
    });
}

std::vector<NSSortDescriptor> NSMetadataQuery::sortDescriptors() const {
    return state_->wanted().sortDescriptors;
}

void NSMetadataQuery::setSortDescriptors(std::vector<NSSortDescriptor> descriptors) {
    state_->change([&](State::Wanted& wanted) {
        wanted.sortDescriptors = std::move(descriptors);
        return true;
    });
}

void NSMetadataQuery::setResultLimit(std::size_t limit) {
    state_->change([&](State::Wanted& wanted) {
        const std::size_t before = std::exchange(wanted.limit, limit);
        return before != 0 && (limit == 0 || limit > before); // what has been left out is missing now
    });
}

bool NSMetadataQuery::startQuery() {
    if (isStarted() || predicate() == nullptr) {
        return false;
    }
    bool didStart = false;
    changeValueForKey("started", [&] { didStart = state_->start(); });
    return didStart;
}

void NSMetadataQuery::stopQuery() {
    if (isStarted()) {
        changeValueForKey("started", [this] { state_->stop(); });
    }
}

bool NSMetadataQuery::isStarted() const {
    return state_->isStarted();
}

bool NSMetadataQuery::isGathering() const {
    return state_->isGathering();
}

void NSMetadataQuery::disableUpdates() {
    state_->disableUpdates();
}

void NSMetadataQuery::enableUpdates() {
    state_->enableUpdates();
}

std::size_t NSMetadataQuery::resultCount() const {
    return state_->resultCount();
}

std::shared_ptr<NSMetadataItem> NSMetadataQuery::resultAtIndex(std::size_t index) const {
    return state_->resultAtIndex(index);
}

const ClassDescription& NSMetadataQuery::describedClass() {
    using Self = NSMetadataQuery;
    static const ClassDescription& description = ClassBuilder<Self>("NSMetadataQuery", NSObject::describedClass())
                                                     .property("searchScopes", &Self::searchScopes)
                                                     .property("started", &Self::isStarted)
                                                     .property("gathering", &Self::isGathering)
                                                     .property("resultCount", &Self::resultCount)
                                                     .method("startQuery", &Self::startQuery)
                                                     .method("stopQuery", &Self::stopQuery)
                                                     .method("disableUpdates", &Self::disableUpdates)
                                                     .method("enableUpdates", &Self::enableUpdates)
                                                     .method("resultAtIndex:", &Self::resultAtIndex)
                                                     .build();
    return description;
}

const ClassDescription& NSMetadataQuery::classDescription() const {
    return describedClass();
}

} // namespace qk
