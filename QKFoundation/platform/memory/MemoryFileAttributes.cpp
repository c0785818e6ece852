// SPDX-License-Identifier: Apache-2.0
// The standard folders, names and attributes of the tree in memory.
#include "QKFoundation/platform/memory/MemoryFileManager.h"
#include "QKFoundation/platform/services/FileAttributeKeys.h"

#include <algorithm>

namespace qk::platform::memory {

void MemoryFileManager::setSearchPaths(NSSearchPathDirectory directory, NSSearchPathDomainMask domain,
                                       const std::vector<NSString>& paths) {
    const std::scoped_lock lock(mutex_);
    searchPaths_[{directory, domain}] = paths;
}

void MemoryFileManager::setTemporaryDirectory(const NSString& path) {
    const std::scoped_lock lock(mutex_);
    temporaryDirectory_ = path;
}

void MemoryFileManager::setDisplayName(const NSString& path, const NSString& name) {
    const std::scoped_lock lock(mutex_);
    displayNames_[normalized(path)] = name;
}

void MemoryFileManager::setExtendedAttribute(const NSString& path, const NSString& name, const NSData& value) {
    const std::scoped_lock lock(mutex_);
    if (Entry* entry = entryAt(normalized(path))) {
        entry->extendedAttributes[name] = value;
    }
}

void MemoryFileManager::setCreationDate(const NSString& path, const NSDate& date) {
    const std::scoped_lock lock(mutex_);
    if (Entry* entry = entryAt(normalized(path))) {
        entry->creationDate = date;
    }
}

void MemoryFileManager::refuseAttributes() {
    const std::scoped_lock lock(mutex_);
    hasAttributes_ = false;
}

NSString MemoryFileManager::homeDirectory() const {
    const std::optional<PasswordEntry> entry =
        users_ != nullptr ? users_->getpwuid(users_->geteuid()) : std::optional<PasswordEntry>();
    return entry.has_value() && entry->homeDirectory.isAbsolutePath() ? normalized(entry->homeDirectory) : "/";
}

NSString MemoryFileManager::temporaryDirectory() const {
    const std::scoped_lock lock(mutex_);
    return temporaryDirectory_;
}

std::vector<NSString> MemoryFileManager::searchPaths(NSSearchPathDirectory directory,
                                                     NSSearchPathDomainMask domain) const {
    const NSString home = homeDirectory();
    const std::scoped_lock lock(mutex_);
    const auto found = searchPaths_.find({directory, domain});
    std::vector<NSString> paths = found != searchPaths_.end() ? found->second : std::vector<NSString>();
    for (NSString& path : paths) {
        if (path.hasPrefix("~")) {
            path = home.stringByAppendingPathComponent(path.substringFromIndex(1));
        }
    }
    return paths;
}

NSString MemoryFileManager::displayNameAtPath(const NSString& path) const {
    const std::scoped_lock lock(mutex_);
    const auto found = displayNames_.find(normalized(path));
    return found != displayNames_.end() ? found->second : path.lastPathComponent();
}

std::optional<NSDictionary> MemoryFileManager::attributesOfItemAtPath(const NSString& path) const {
    const std::scoped_lock lock(mutex_);
    const Entry* entry = entryAt(normalized(path));
    if (entry == nullptr) {
        return std::nullopt;
    }
    NSMutableDictionary attributes;
    if (entry->creationDate.has_value()) {
        attributes.setObject(*entry->creationDate, NSFileCreationDate);
    }
    if (hasAttributes_ && !entry->extendedAttributes.empty()) {
        NSMutableDictionary extended;
        for (const auto& [name, value] : entry->extendedAttributes) {
            extended.setObject(value, name);
        }
        attributes.setObject(extended.copy(), NSFileExtendedAttributes);
    }
    return attributes.copy();
}

bool MemoryFileManager::setAttributes(const NSDictionary& attributes, const NSString& ofItemAtPath) {
    const std::scoped_lock lock(mutex_);
    Entry* entry = entryAt(normalized(ofItemAtPath));
    if (entry == nullptr || !hasAttributes_) {
        return false;
    }
    if (const auto* date = attributes.get<NSDate>(NSFileCreationDate)) {
        entry->creationDate = *date;
    }
    if (const auto* extended = attributes.get<NSDictionary>(NSFileExtendedAttributes)) {
        entry->extendedAttributes.clear();
        for (const auto& [name, value] : *extended) {
            if (const auto* data = value.as<NSData>()) {
                entry->extendedAttributes[name] = *data;
            }
        }
    }
    return true;
}

std::optional<std::size_t> MemoryFileManager::getxattr(const NSString& path, const NSString& name, void* value,
                                                       std::size_t size) const {
    const std::scoped_lock lock(mutex_);
    const Entry* entry = hasAttributes_ ? entryAt(normalized(path)) : nullptr;
    if (entry == nullptr) {
        return std::nullopt;
    }
    const auto found = entry->extendedAttributes.find(name);
    if (found == entry->extendedAttributes.end()) {
        return std::nullopt;
    }
    const std::string_view bytes = found->second.view();
    if (value != nullptr) {
        if (size < bytes.size()) {
            return std::nullopt;
        }
        std::ranges::copy(bytes, static_cast<char*>(value));
    }
    return bytes.size();
}

} // namespace qk::platform::memory
