// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryFileManager.h"

#include <algorithm>
#include <utility>

namespace qk::platform::memory {

NSString MemoryFileManager::normalized(const NSString& path) {
    return path.stringByAppendingPathComponent(NSString());
}

MemoryFileManager::MemoryFileManager(std::shared_ptr<const Users> users) : users_(std::move(users)) {
    entries_["/"] = {Directory{}};
}

void MemoryFileManager::addDirectory(const NSString& path) {
    const std::scoped_lock lock(mutex_);
    createDirectories(normalized(path));
}

void MemoryFileManager::addFile(const NSString& path, const NSData& contents) {
    add(path, {File{contents}});
}

void MemoryFileManager::addPropertyList(const NSString& path, const NSDictionary& dictionary) {
    add(path, {dictionary});
}

void MemoryFileManager::add(const NSString& path, Entry entry) {
    const std::scoped_lock lock(mutex_);
    const NSString name = normalized(path);
    createDirectories(name.stringByDeletingLastPathComponent());
    entries_[name] = std::move(entry);
}

void MemoryFileManager::addSymbolicLink(const NSString& path, const NSString& destination) {
    add(path, {Link{destination}});
}

void MemoryFileManager::denyReading(const NSString& path) {
    const std::scoped_lock lock(mutex_);
    if (const auto found = entries_.find(normalized(path)); found != entries_.end()) {
        found->second.readable = false;
    }
}

void MemoryFileManager::remove(const NSString& path) {
    const std::scoped_lock lock(mutex_);
    const NSString name = normalized(path);
    const NSString below = name + "/";
    std::erase_if(entries_, [&](const auto& entry) { return entry.first == name || entry.first.hasPrefix(below); });
}

bool MemoryFileManager::isDirectory(const NSString& path) const {
    const std::scoped_lock lock(mutex_);
    const Entry* entry = entryAt(normalized(path));
    return entry != nullptr && std::holds_alternative<Directory>(entry->content);
}

bool MemoryFileManager::createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) {
    const std::scoped_lock lock(mutex_);
    const NSString name = normalized(path);
    if (!name.isAbsolutePath()) {
        return false;
    }
    if (withIntermediateDirectories) {
        return createDirectories(name);
    }
    const Entry* parent = entryAt(name.stringByDeletingLastPathComponent());
    if (entryAt(name) != nullptr || parent == nullptr || !std::holds_alternative<Directory>(parent->content)) {
        return false;
    }
    entries_[name] = {Directory{}};
    return true;
}

bool MemoryFileManager::fileExistsAtPath(const NSString& path, bool* isDirectory) const {
    const std::scoped_lock lock(mutex_);
    const Entry* entry = targetOf(path);
    if (entry != nullptr && isDirectory != nullptr) {
        *isDirectory = std::holds_alternative<Directory>(entry->content);
    }
    return entry != nullptr;
}

std::optional<NSData> MemoryFileManager::contentsAtPath(const NSString& path) const {
    const std::scoped_lock lock(mutex_);
    const Entry* entry = targetOf(path);
    const auto* file = entry != nullptr ? std::get_if<File>(&entry->content) : nullptr;
    return file != nullptr && entry->readable ? std::optional(file->contents) : std::nullopt;
}

std::optional<std::vector<NSString>> MemoryFileManager::contentsOfDirectoryAtPath(const NSString& path) const {
    const std::scoped_lock lock(mutex_);
    const NSString name = resolved(normalized(path)).value_or(NSString());
    const Entry* entry = entryAt(name);
    if (entry == nullptr || !entry->readable || !std::holds_alternative<Directory>(entry->content)) {
        return std::nullopt;
    }
    std::vector<NSString> names;
    for (const auto& [each, content] : entries_) {
        if (each != name && each.stringByDeletingLastPathComponent() == name) {
            names.push_back(each.lastPathComponent());
        }
    }
    return names;
}

std::optional<NSDictionary> MemoryFileManager::dictionaryWithContentsOfFile(const NSString& path) const {
    const std::scoped_lock lock(mutex_);
    const Entry* entry = targetOf(path);
    const auto* dictionary = entry != nullptr ? std::get_if<NSDictionary>(&entry->content) : nullptr;
    return dictionary != nullptr && entry->readable ? std::optional(*dictionary) : std::nullopt;
}

void MemoryFileManager::addVolume(const NSString& path, const NSDictionary& resourceValues, bool isHidden) {
    mount(path, resourceValues, isHidden);
}

void MemoryFileManager::addUnreadableVolume(const NSString& path) {
    mount(path, std::nullopt, false);
}

void MemoryFileManager::mount(const NSString& path, std::optional<NSDictionary> values, bool isHidden) {
    if (const auto url = NSURL::fileURLWithPath(path, true)) {
        const std::scoped_lock lock(mutex_);
        volumes_.push_back({*url, std::move(values), isHidden});
    }
}

std::vector<NSURL> MemoryFileManager::mountedVolumeURLs(bool skipHiddenVolumes) const {
    const std::scoped_lock lock(mutex_);
    std::vector<NSURL> urls;
    for (const Volume& volume : volumes_) {
        if (!skipHiddenVolumes || !volume.isHidden) {
            urls.push_back(volume.url);
        }
    }
    return urls;
}

const MemoryFileManager::Entry* MemoryFileManager::entryAt(const NSString& path) const {
    const auto found = entries_.find(path);
    return found != entries_.end() ? &found->second : nullptr;
}

MemoryFileManager::Entry* MemoryFileManager::entryAt(const NSString& path) {
    const auto found = entries_.find(path);
    return found != entries_.end() ? &found->second : nullptr;
}

bool MemoryFileManager::createDirectories(const NSString& path) {
    if (const Entry* entry = entryAt(path)) {
        return std::holds_alternative<Directory>(entry->content);
    }
    const NSString parent = path.stringByDeletingLastPathComponent();
    if (parent.isEmpty() || !createDirectories(parent)) {
        return false;
    }
    entries_[path] = {Directory{}};
    return true;
}

} // namespace qk::platform::memory
