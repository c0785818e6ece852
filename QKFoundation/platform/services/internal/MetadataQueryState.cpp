// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/MetadataQueryState.h"

#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSNotificationCenter.h"

#include <utility>

namespace qk {
namespace {

// A scope that is neither a path nor a file URL is a place where nothing is; left out, it could make the search one of
// everything.
std::vector<NSString> pathsOf(const NSArray& scopes) {
    std::vector<NSString> paths;
    paths.reserve(scopes.count());
    for (const Value& scope : scopes) {
        const auto* path = scope.as<NSString>();
        const auto* url = scope.as<NSURL>();
        if (path != nullptr) {
            paths.push_back(*path);
        } else {
            paths.push_back(url != nullptr && url->isFileURL() ? url->path().value_or(NSString()) : NSString());
        }
    }
    return paths;
}

} // namespace

void NSMetadataQuery::State::setQuery(const std::shared_ptr<NSMetadataQuery>& query) {
    const std::scoped_lock lock(mutex_);
    query_ = query;
}

NSMetadataQuery::State::Wanted NSMetadataQuery::State::wanted() const {
    const std::scoped_lock lock(mutex_);
    return wanted_;
}

bool NSMetadataQuery::State::isStarted() const {
    const std::scoped_lock lock(mutex_);
    return isStarted_;
}

bool NSMetadataQuery::State::isGathering() const {
    const std::scoped_lock lock(mutex_);
    return isGathering_;
}

bool NSMetadataQuery::State::start() {
    platform::MetadataResults former;
    std::shared_ptr<platform::RunLoop> runLoop = dispatch_->currentRunLoop();
    Generation generation = 0;
    {
        const std::scoped_lock lock(mutex_);
        if (isStarted_ || wanted_.predicate == nullptr) {
            return false;
        }
        isStarted_ = true;
        isGathering_ = true;
        if (disabled_ == 0) {
            former.swap(results_);
        }
        generation = ++generation_;
        run_ = {nullptr, runLoop, std::this_thread::get_id()};
    }
    runLoop->perform([weak = weak_from_this(), generation] {
        if (const auto self = weak.lock()) {
            self->post(NSMetadataQueryDidStartGatheringNotification, generation);
        }
    });
    begin(generation);
    return true;
}

void NSMetadataQuery::State::stop() {
    Run run;
    std::optional<platform::MetadataResults> pending;
    {
        const std::scoped_lock lock(mutex_);
        if (!isStarted_) {
            return;
        }
        isStarted_ = false;
        isGathering_ = false;
        ++generation_;
        pending.swap(pending_);
        run = std::exchange(run_, {});
    }
    end(std::move(run));
}

void NSMetadataQuery::State::begin(Generation generation) {
    platform::MetadataSearch search;
    {
        const std::scoped_lock lock(mutex_);
        if (generation != generation_) {
            return;
        }
        search = {pathsOf(wanted_.scopes), wanted_.predicate, wanted_.sortDescriptors, wanted_.limit};
    }
    platform::MetadataListener listener;
    listener.progress = [weak = weak_from_this(), generation](std::size_t /*examined*/) {
        if (const auto self = weak.lock()) {
            self->progress(generation);
        }
    };
    listener.deliver = [weak = weak_from_this(), generation](platform::MetadataResults results) {
        if (const auto self = weak.lock()) {
            self->deliver(generation, std::move(results));
        }
    };
    std::shared_ptr<platform::MetadataSearchRun> run = index_->begin(search, std::move(listener));
    const std::scoped_lock lock(mutex_);
    if (generation == generation_) {
        run_.search.swap(run); // else another thread has stopped or changed the query meanwhile, and it ends here
    }
}

void NSMetadataQuery::State::end(Run run) {
    if (run.search == nullptr) {
        return;
    }
    const bool isInside = [this] {
        const std::scoped_lock lock(mutex_);
        return telling_ > 0;
    }();
    if (isInside || run.thread != std::this_thread::get_id()) {
        run.runLoop->perform([search = std::move(run.search)] {});
    }
}

void NSMetadataQuery::State::scheduleRestart() {
    pending_.reset();
    if (disabled_ == 0) { // somebody who is reading them reads them to the end
        results_.clear();
    }
    isGathering_ = true;
    run_.runLoop->perform([weak = weak_from_this(), generation = ++generation_] {
        if (const auto self = weak.lock()) {
            self->restart(generation);
        }
    });
}

void NSMetadataQuery::State::restart(Generation generation) {
    Run former;
    std::shared_ptr<NSMetadataQuery> query;
    {
        const std::scoped_lock lock(mutex_);
        if (generation != generation_) {
            return;
        }
        former = run_;
        run_.search.reset();
        query = wanted_.predicate == nullptr ? query_.lock() : nullptr;
    }
    end(std::move(former));
    if (query != nullptr) {
        query->stopQuery();
        return;
    }
    post(NSMetadataQueryDidStartGatheringNotification, generation);
    begin(generation);
}

void NSMetadataQuery::State::progress(Generation generation) {
    {
        const std::scoped_lock lock(mutex_);
        ++telling_;
    }
    post(NSMetadataQueryGatheringProgressNotification, generation);
    const std::scoped_lock lock(mutex_);
    --telling_;
}

void NSMetadataQuery::State::deliver(Generation generation, platform::MetadataResults results) {
    {
        const std::scoped_lock lock(mutex_);
        if (generation != generation_) {
            return;
        }
        if (pending_.has_value()) {
            pending_->swap(results);
        } else {
            pending_ = std::move(results);
        }
        ++telling_;
    }
    deliverPending(generation);
    const std::scoped_lock lock(mutex_);
    --telling_;
}

void NSMetadataQuery::State::deliverPending(Generation generation) {
    std::optional<platform::MetadataResults> results;
    bool wasGathering = false;
    {
        const std::scoped_lock lock(mutex_);
        if (generation != generation_ || disabled_ > 0 || !pending_.has_value()) {
            return;
        }
        results.swap(pending_);
        results_.swap(*results); // the former ones are given back without the lock
        wasGathering = std::exchange(isGathering_, false);
    }
    post(wasGathering ? NSMetadataQueryDidFinishGatheringNotification : NSMetadataQueryDidUpdateNotification,
         generation);
}

void NSMetadataQuery::State::post(const char* name, Generation generation) {
    std::shared_ptr<NSMetadataQuery> query;
    {
        const std::scoped_lock lock(mutex_);
        query = generation == generation_ ? query_.lock() : nullptr;
    }
    if (query != nullptr) {
        NSNotificationCenter::defaultCenter().postNotificationName(NSString::fromUTF8Lossy(name), query);
    }
}

void NSMetadataQuery::State::disableUpdates() {
    const std::scoped_lock lock(mutex_);
    ++disabled_;
}

void NSMetadataQuery::State::enableUpdates() {
    const std::scoped_lock lock(mutex_);
    if (disabled_ == 0 || --disabled_ > 0 || !pending_.has_value()) {
        return;
    }
    run_.runLoop->perform([weak = weak_from_this(), generation = generation_] {
        if (const auto self = weak.lock()) {
            self->deliverPending(generation);
        }
    });
}

std::size_t NSMetadataQuery::State::resultCount() const {
    const std::scoped_lock lock(mutex_);
    return results_.size();
}

std::shared_ptr<NSMetadataItem> NSMetadataQuery::State::resultAtIndex(std::size_t index) const {
    const std::scoped_lock lock(mutex_);
    if (index >= results_.size()) {
        throw NSRangeException("resultAtIndex: the index lies behind the last result");
    }
    return results_[index];
}

} // namespace qk
