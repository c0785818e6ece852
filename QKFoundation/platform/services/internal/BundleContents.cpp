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
                                               const PropertyLists& propertyLists, const Locale& locale) {
    if (!isFolder(*fileManager, path)) {
        return nullptr;
    }
    return std::shared_ptr<NSBundle>(
        new NSBundle(std::make_unique<BundleContents>(path, fileManager, propertyLists, locale)));
}

BundleContents::BundleContents(const NSString& path, FileManager fileManager, PropertyLists propertyLists,
                               Locale locale)
    : fileManager_(std::move(fileManager)),
      propertyLists_(std::move(propertyLists)),
      locale_(std::move(locale)),
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
    LanguageFolder folder = path.has_value() ? open(*path, fileManager_, propertyLists_, locale_) : nullptr;
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
    const std::optional<NSDictionary> entries =
        readDictionary(resources_.stringByAppendingPathComponent(name + ".strings"));
    StringTable read = entries.has_value() ? StringTable(*entries) : StringTable();
    if (read.count() == 0 && isTooMuchMissing()) {
        return noTable_;
    }
    return tables_.add(name, std::move(read));
}

std::optional<NSDictionary> BundleContents::readDictionary(const NSString& path) const {
    const std::optional<NSData> bytes = fileManager_->contentsAtPath(path);
    if (!bytes.has_value()) { // a machine described in code may hold the property list itself, without bytes
        return fileManager_->dictionaryWithContentsOfFile(path);
    }
    const std::optional<Value> list =
        propertyLists_->propertyListWithData(*bytes, platform::NSPropertyListMutabilityOptions::Immutable);
    const auto* const entries = list.has_value() ? list->as<NSDictionary>() : nullptr;
    return entries != nullptr ? std::optional(*entries) : std::nullopt;
}

NSDictionary BundleContents::readInfoDictionary() const {
    for (const NSString& name :
         {NSString("Contents/Info.plist"), NSString("Resources/Info.plist"), NSString("Info.plist")}) {
        if (std::optional<NSDictionary> list = readDictionary(path_.stringByAppendingPathComponent(name))) {
            return *std::move(list);
        }
    }
    return {};
}

const NSDictionary& BundleContents::infoDictionary() const {
    return infoDictionary_.get([this] { return readInfoDictionary(); });
}

const StringTable& BundleContents::localizedInfo() const {
    for (const NSString& language : locale_->preferredLanguages()) {
        const NSString base = language.substringToIndex(language.find(u"-").value_or(language.length()));
        for (const NSString& name : {language, base}) {
            if (const LanguageFolder& folder = languageFolder(name)) {
                return folder->contents().table("InfoPlist");
            }
        }
    }
    return noTable_;
}

} // namespace qk::internal
