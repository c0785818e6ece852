// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/MetadataCandidates.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/services/MetadataIndex.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace qk::platform {
namespace {

const NSString kPath = NSMetadataItemPathKey;
const NSString kDisplayName = NSMetadataItemDisplayNameKey;
const NSString kType = kMDItemContentType;
const NSString kTree = kMDItemContentTypeTree;
const NSString kModified = kMDItemContentModificationDate;
const NSString kUsed = kMDItemLastUsedDate;

NSDate date(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

// Dates of files are numbers, so this is the order of `NSDate` without a call for each file.
std::weak_ordering order(double left, double right) {
    if (left < right) {
        return std::weak_ordering::less;
    }
    return left > right ? std::weak_ordering::greater : std::weak_ordering::equivalent;
}

std::weak_ordering reversed(std::weak_ordering order) {
    return order == std::weak_ordering::less
               ? std::weak_ordering::greater
               : (order == std::weak_ordering::greater ? std::weak_ordering::less : order);
}

std::weak_ordering ordering(NSComparisonResult result) {
    switch (result) {
    case NSComparisonResult::NSOrderedAscending: return std::weak_ordering::less;
    case NSComparisonResult::NSOrderedDescending: return std::weak_ordering::greater;
    case NSComparisonResult::NSOrderedSame: break;
    }
    return std::weak_ordering::equivalent;
}

} // namespace

NSString MetadataAttributes::pathOf(const MetadataCandidate& candidate) const {
    std::string_view path = candidate.path;
    if (!root_.empty() && path.starts_with(root_)) {
        path.remove_prefix(root_.size());
    }
    return stringWithFileSystemRepresentation(path);
}

std::optional<Value> MetadataAttributes::valueOf(const MetadataCandidate& candidate, const NSString& name) const {
    if (name == kTree) {
        return candidate.type->tree;
    }
    if (name == kType) {
        return candidate.type->identifier;
    }
    if (name == kModified) {
        return date(candidate.modified);
    }
    if (name == kUsed) {
        return date(candidate.used);
    }
    if (name == kPath) {
        return pathOf(candidate);
    }
    return name == kDisplayName ? std::optional<Value>(pathOf(candidate).lastPathComponent()) : std::nullopt;
}

NSDictionary MetadataAttributes::allOf(const MetadataCandidate& candidate) const {
    const NSString path = pathOf(candidate);
    return NSDictionary({{kPath, path},
                         {kDisplayName, path.lastPathComponent()},
                         {kType, candidate.type->identifier},
                         {kTree, candidate.type->tree},
                         {kModified, date(candidate.modified)},
                         {kUsed, date(candidate.used)}});
}

MetadataOrder::MetadataOrder(const std::vector<NSSortDescriptor>& descriptors, MetadataAttributes attributes)
    : attributes_(std::move(attributes)) {
    for (const NSSortDescriptor& descriptor : descriptors) {
        const NSString& key = descriptor.key();
        const Field field = key == kModified ? Field::modified
                            : key == kUsed   ? Field::used
                            : key == kPath   ? Field::path
                                             : Field::other;
        steps_.push_back({.field = field, .descriptor = descriptor});
    }
}

std::weak_ordering MetadataOrder::compare(const Step& step, const MetadataCandidate& left,
                                          const MetadataCandidate& right) const {
    const auto directed = [&step](std::weak_ordering ascending) {
        return step.descriptor.ascending() ? ascending : reversed(ascending);
    };
    switch (step.field) {
    case Field::modified: return directed(order(left.modified, right.modified));
    case Field::used: return directed(order(left.used, right.used));
    case Field::path: return directed(attributes_.pathOf(left) <=> attributes_.pathOf(right));
    case Field::other: break;
    }
    const NSString& key = step.descriptor.key();
    return ordering(step.descriptor.compareValues(attributes_.valueOf(left, key), attributes_.valueOf(right, key)));
}

bool MetadataOrder::isBefore(const MetadataCandidate& left, const MetadataCandidate& right) const {
    for (const Step& step : steps_) {
        if (const std::weak_ordering result = compare(step, left, right); result != std::weak_ordering::equivalent) {
            return result == std::weak_ordering::less;
        }
    }
    return left.path < right.path;
}

bool MetadataOrder::comesAfter(double modified, double used, const MetadataCandidate& other) const {
    for (const Step& step : steps_) {
        if (step.field != Field::modified && step.field != Field::used) {
            return false;
        }
        const std::weak_ordering ascending =
            step.field == Field::modified ? order(modified, other.modified) : order(used, other.used);
        if (ascending != std::weak_ordering::equivalent) {
            return (ascending == std::weak_ordering::greater) == step.descriptor.ascending();
        }
    }
    return false;
}

MetadataCollector::MetadataCollector(const MetadataOrder& order, std::size_t most,
                                     std::optional<MetadataCandidate> horizon)
    : order_(&order), most_(most), horizon_(std::move(horizon)) {}

bool MetadataCollector::mayTake(double modified, double used) const {
    return !horizon_.has_value() || !order_->comesAfter(modified, used, *horizon_);
}

void MetadataCollector::take(MetadataCandidate candidate) {
    if (horizon_.has_value() && order_->isBefore(*horizon_, candidate)) {
        return;
    }
    kept_.push_back(std::move(candidate));
    if (most_ != 0 && kept_.size() >= 2 * most_) {
        cut();
    }
}

void MetadataCollector::cut() {
    if (most_ == 0 || kept_.size() <= most_) {
        return;
    }
    const auto last = std::next(kept_.begin(), static_cast<std::ptrdiff_t>(most_) - 1);
    std::ranges::nth_element(kept_, last, [this](const MetadataCandidate& left, const MetadataCandidate& right) {
        return order_->isBefore(left, right);
    });
    horizon_ = *last;
    kept_.erase(std::next(last), kept_.end());
}

MetadataSelection MetadataCollector::select(std::vector<MetadataCollector>& others) {
    for (MetadataCollector& other : others) {
        std::ranges::move(other.kept_, std::back_inserter(kept_));
        other.kept_.clear();
        if (other.horizon_.has_value() && (!horizon_.has_value() || order_->isBefore(*other.horizon_, *horizon_))) {
            horizon_ = std::move(other.horizon_);
        }
    }
    // What one has left out comes after its own horizon only: behind the nearest of them nothing is complete.
    if (horizon_.has_value()) {
        std::erase_if(kept_,
                      [this](const MetadataCandidate& candidate) { return order_->isBefore(*horizon_, candidate); });
    }
    cut();
    std::ranges::sort(kept_, [this](const MetadataCandidate& left, const MetadataCandidate& right) {
        return order_->isBefore(left, right);
    });
    return {.best = std::exchange(kept_, {}), .horizon = std::exchange(horizon_, std::nullopt)};
}

} // namespace qk::platform
