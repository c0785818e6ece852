// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/BundleContents.h"

#include <utility>

namespace qk::internal {
namespace {

bool isFolder(const platform::FileManager& fileManager, const NSString& path) {
    bool isDirectory = false;
    return fileManager.fileExistsAtPath(path, &isDirectory) && isDirectory;
}

NSString resourcesOf(const NSString& path, const platform::FileManager& fileManager) {
    for (const NSString& name : {NSString("Contents/Resources"), NSString("Resources")}) {
        if (NSString folder = path.stringByAppendingPathComponent(name); isFolder(fileManager, folder)) {
            return folder;
        }
    }
    return path;
}

} // namespace

std::shared_ptr<NSBundle> BundleContents::open(const NSString& path, const FileManager& fileManager,
                                               const PropertyLists& propertyLists) {
    if (!isFolder(*fileManager, path)) {
        return nullptr;
    }
    return std::shared_ptr<NSBundle>(new NSBundle(std::make_unique<BundleContents>(path, fileManager, propertyLists)));
}

BundleContents::BundleContents(const NSString& path, FileManager fileManager, PropertyLists propertyLists)
    : fileManager_(std::move(fileManager)),
      propertyLists_(std::move(propertyLists)),
      path_(path.stringByAppendingPathComponent("")),
      resources_(resourcesOf(path_, *fileManager_)) {}

std::optional<NSString> BundleContents::pathForResource(const NSString& name, const NSString& ofType) const {
    if (name.isEmpty()) {
        return std::nullopt;
    }
    NSString path = resources_.stringByAppendingPathComponent(ofType.isEmpty() ? name : name + "." + ofType);
    return fileManager_->fileExistsAtPath(path) ? std::optional(std::move(path)) : std::nullopt;
}

// A host that asks for names without end must not make the lists grow without end: what is missing beyond a number of
// names is looked for again each time.
bool BundleContents::isTooMuchMissing() const {
    constexpr std::size_t kMostMissing = 32;
    return ++missing_ > kMostMissing;
}

const BundleContents::LanguageFolder& BundleContents::openLanguageFolder(const NSString& name) const {
    const std::scoped_lock lock(mutex_);
    if (const LanguageFolder* const known = languages_.find(name)) { // another thread was first
        return *known;
    }
    const bool isName = !name.contains(u"/");
    const std::optional<NSString> path = isName ? pathForResource(name, "lproj") : std::nullopt;
    LanguageFolder folder = path.has_value() ? open(*path, fileManager_, propertyLists_) : nullptr;
    if (folder == nullptr && isTooMuchMissing()) {
        return noFolder_;
    }
    return languages_.add(name, std::move(folder));
}

const StringTable& BundleContents::openDefaultTable() const {
    const StringTable& opened = table("Localizable");
    defaultTable_.store(&opened, std::memory_order_release);
    return opened;
}

const StringTable& BundleContents::openTable(const NSString& name) const {
    const std::scoped_lock lock(mutex_);
    if (const StringTable* const known = tables_.find(name)) { // another thread was first
        return *known;
    }
    StringTable read = readTable(name);
    if (read.count() == 0 && isTooMuchMissing()) {
        return noTable_;
    }
    return tables_.add(name, std::move(read));
}

StringTable BundleContents::readTable(const NSString& name) const {
    const NSString path = resources_.stringByAppendingPathComponent(name + ".strings");
    if (const std::optional<NSData> bytes = fileManager_->contentsAtPath(path)) {
        const std::optional<Value> list =
            propertyLists_->propertyListWithData(*bytes, platform::NSPropertyListMutabilityOptions::Immutable);
        const auto* const entries = list.has_value() ? list->as<NSDictionary>() : nullptr;
        return entries != nullptr ? StringTable(*entries) : StringTable();
    }
    // A machine described in code may hold the property list itself, without bytes.
    const std::optional<NSDictionary> entries = fileManager_->dictionaryWithContentsOfFile(path);
    return entries.has_value() ? StringTable(*entries) : StringTable();
}

} // namespace qk::internal
