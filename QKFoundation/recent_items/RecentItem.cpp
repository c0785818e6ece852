// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/RecentItem.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/services/Services.h"

#include <algorithm>
#include <vector>

namespace qk {
namespace {

using namespace platform;

struct Kind {
    NSString key;
    std::uint64_t type;
};

// The first that is true counts.
const std::vector<Kind>& kinds() {
    static const auto& table = *new std::vector<Kind>{{NSURLIsRegularFileKey, RecentItemTypeFile},
                                                      {NSURLIsSymbolicLinkKey, RecentItemTypeSymbolicLink},
                                                      {NSURLIsDirectoryKey, RecentItemTypeDirectory},
                                                      {NSURLIsPackageKey, RecentItemTypePackage},
                                                      {NSURLIsVolumeKey, RecentItemTypeVolume}};
    return table;
}

// What a new item reads, all at once.
struct Keys {
    NSString isReadable = NSURLIsReadableKey;
    NSString isWritable = NSURLIsWritableKey;
    NSString isExecutable = NSURLIsExecutableKey;
    NSString modificationDate = NSURLContentModificationDateKey;
    NSString accessDate = NSURLContentAccessDateKey;
    std::vector<NSString> all = {isReadable, isWritable, isExecutable, modificationDate, accessDate};

    Keys() { std::ranges::transform(kinds(), std::back_inserter(all), &Kind::key); }
};

const Keys& keys() {
    static const auto& theKeys = *new Keys;
    return theKeys;
}

NSDictionary valuesAt(const Services& services, const NSURL& url, const std::vector<NSString>& wanted) {
    return services.fileManager->resourceValuesForKeys(url, wanted).value_or(NSDictionary());
}

bool boolValue(const NSDictionary& values, const NSString& key) {
    const auto* number = values.get<NSNumber>(key);
    return number != nullptr && number->boolValue();
}

std::optional<NSDate> dateValue(const NSDictionary& values, const NSString& key) {
    const auto* date = values.get<NSDate>(key);
    return date != nullptr ? std::optional(*date) : std::nullopt;
}

std::uint64_t typeOf(const NSDictionary& values) {
    const auto kind = std::ranges::find_if(kinds(), [&](const Kind& each) { return boolValue(values, each.key); });
    return kind != kinds().end() ? kind->type : RecentItemTypeUnknown;
}

} // namespace

const ClassDescription& RecentItem::describedClass() {
    using Self = RecentItem;
    static const ClassDescription& description =
        ClassBuilder<Self>("RecentItem", NSObject::describedClass())
            .property("type", &Self::type, &Self::setType)
            .property("readable", &Self::isReadable, &Self::setReadable)
            .property("writeable", &Self::isWriteable, &Self::setWriteable)
            .property("executeable", &Self::isExecuteable, &Self::setExecuteable)
            .property("displayName", &Self::displayName, &Self::setDisplayName)
            .property("path", &Self::path, &Self::setPath)
            .property("contentModificationDate", &Self::contentModificationDate, &Self::setContentModificationDate)
            .property("contentAccessDate", &Self::contentAccessDate, &Self::setContentAccessDate)
            .property("latestInteractionDate", &Self::latestInteractionDate, &Self::setLatestInteractionDate)
            .method("typeForURL:", &Self::typeForURL)
            .method("boolValueForURL:key:", &Self::boolValueForURL)
            .method("dateValueForURL:key:", &Self::dateValueForURL)
            .method("evaluateLatestInteractionDate", &Self::evaluateLatestInteractionDate)
            .build();
    return description;
}

const ClassDescription& RecentItem::classDescription() const {
    return describedClass();
}

std::shared_ptr<RecentItem> RecentItem::recentItemWithPath(const std::optional<NSString>& path) {
    return initWithPath(path);
}

std::shared_ptr<RecentItem> RecentItem::initWithPath(const std::optional<NSString>& path) {
    return initWithPath(services(), path);
}

std::shared_ptr<RecentItem> RecentItem::initWithPath(const std::shared_ptr<const Services>& services,
                                                     const std::optional<NSString>& path) {
    std::shared_ptr<RecentItem> item(new RecentItem(services));
    if (!path.has_value()) {
        return item;
    }
    const std::optional<NSURL> url = NSURL::fileURLWithPath(*path);
    const NSDictionary values = url.has_value() ? valuesAt(*services, *url, keys().all) : NSDictionary();
    item->type_ = typeOf(values);
    item->readable_ = boolValue(values, keys().isReadable);
    item->writeable_ = boolValue(values, keys().isWritable);
    item->executeable_ = boolValue(values, keys().isExecutable);
    item->displayName_ = path->lastPathComponent();
    item->path_ = *path;
    item->contentModificationDate_ = dateValue(values, keys().modificationDate);
    item->contentModificationDate_ = dateValue(values, keys().accessDate); // instead: the use of the content counts
    item->latestInteractionDate_ = item->evaluateLatestInteractionDate();
    return item;
}

bool RecentItem::isEqual(const Value& other) const {
    const auto item = other.asObject<RecentItem>();
    return item != nullptr && item->path_ == path_;
}

std::size_t RecentItem::hash() const {
    return path_.has_value() ? path_->hash() : 0;
}

NSString RecentItem::description() const {
    static const NSString& nothing = *new NSString("(null)");
    const NSString date = latestInteractionDate_.has_value() ? latestInteractionDate_->description() : nothing;
    return NSObject::description() + "(" + date + " " + path_.value_or(nothing) + ")";
}

std::uint64_t RecentItem::typeForURL(const NSURL& url) const {
    std::vector<NSString> wanted;
    std::ranges::transform(kinds(), std::back_inserter(wanted), &Kind::key);
    return typeOf(valuesAt(*services_, url, wanted));
}

std::optional<NSDate> RecentItem::evaluateLatestInteractionDate() const {
    const bool isAccessedLater = contentModificationDate_.has_value() && contentAccessDate_.has_value() &&
                                 *contentModificationDate_ < *contentAccessDate_;
    return isAccessedLater ? contentAccessDate_ : contentModificationDate_;
}

bool RecentItem::boolValueForURL(const NSURL& url, const NSString& key) const {
    return boolValue(valuesAt(*services_, url, {key}), key);
}

std::optional<NSDate> RecentItem::dateValueForURL(const NSURL& url, const NSString& key) const {
    return dateValue(valuesAt(*services_, url, {key}), key);
}

} // namespace qk
