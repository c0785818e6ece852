// SPDX-License-Identifier: Apache-2.0
// The resource values and the symbolic links of the tree in memory.
#include "QKFoundation/platform/memory/MemoryFileManager.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/services/internal/FileResourceKeys.h"

#include <algorithm>

namespace qk::platform::memory {
namespace {

constexpr int kMostLinks = 40; // of one path, before it counts as a circle

} // namespace

void MemoryFileManager::setResourceValue(const NSString& path, const NSString& key, const std::optional<Value>& value) {
    const std::scoped_lock lock(mutex_);
    if (Entry* entry = entryAt(normalized(path))) {
        entry->resourceValues[key] = value;
    }
}

std::optional<NSString> MemoryFileManager::resolved(const NSString& path) const {
    int links = 0;
    NSString done = "/";
    std::vector<NSString> rest = path.pathComponents();
    std::ranges::reverse(rest);
    while (!rest.empty()) {
        const NSString component = std::move(rest.back());
        rest.pop_back();
        if (component == "." || component == "/") {
            continue;
        }
        if (component == "..") {
            done = done.stringByDeletingLastPathComponent();
            continue;
        }
        const NSString next = done.stringByAppendingPathComponent(component);
        const Entry* entry = entryAt(next);
        const auto* link = entry != nullptr ? std::get_if<Link>(&entry->content) : nullptr;
        if (entry == nullptr || (link != nullptr && ++links > kMostLinks)) {
            return std::nullopt;
        }
        if (link == nullptr) {
            done = next;
            continue;
        }
        done = link->destination.isAbsolutePath() ? NSString("/") : done;
        std::vector<NSString> components = link->destination.pathComponents();
        rest.insert(rest.end(), components.rbegin(), components.rend());
    }
    return done;
}

const MemoryFileManager::Entry* MemoryFileManager::targetOf(const NSString& path) const {
    const std::optional<NSString> target = path.isAbsolutePath() ? resolved(normalized(path)) : std::nullopt;
    return target.has_value() ? entryAt(*target) : nullptr;
}

std::optional<NSDictionary> MemoryFileManager::resourceValuesForKeys(const NSURL& url,
                                                                     const std::vector<NSString>& keys) const {
    const std::scoped_lock lock(mutex_);
    if (!internal::haveFileKey(keys)) {
        return volumeValues(url, keys);
    }
    const std::optional<NSString> path = url.isFileURL() ? url.path() : std::nullopt;
    const auto values = path.has_value() ? fileValues(normalized(*path), keys) : std::nullopt;
    if (!values.has_value()) {
        return std::nullopt;
    }
    NSMutableDictionary both(*values);
    both.addEntriesFromDictionary(volumeValues(url, keys).value_or(NSDictionary()));
    return both.copy();
}

std::optional<NSDictionary> MemoryFileManager::volumeValues(const NSURL& url, const std::vector<NSString>& keys) const {
    const auto volume = std::ranges::find(volumes_, url, &Volume::url);
    if (volume == volumes_.end() || !volume->values.has_value()) {
        return std::nullopt;
    }
    NSMutableDictionary values;
    for (const NSString& key : keys) {
        if (const Value* value = volume->values->objectForKey(key)) {
            values.setObject(*value, key);
        }
    }
    return values.copy();
}

std::optional<NSDictionary> MemoryFileManager::fileValues(const NSString& path,
                                                          const std::vector<NSString>& keys) const {
    // Links above the file are followed, one that it is itself is not.
    const NSString name = path.lastPathComponent();
    const std::optional<NSString> folder = resolved(path.stringByDeletingLastPathComponent());
    const Entry* entry =
        folder.has_value() ? entryAt(path == "/" ? path : folder->stringByAppendingPathComponent(name)) : nullptr;
    if (entry == nullptr) {
        return std::nullopt;
    }
    const Entry* target = targetOf(path);
    const bool isDirectory = std::holds_alternative<Directory>(entry->content);
    const bool isLink = std::holds_alternative<Link>(entry->content);
    const auto isVolume = [&] {
        return std::ranges::any_of(volumes_, [&](const Volume& volume) { return volume.url.path() == path; });
    };
    NSMutableDictionary values;
    values.setObject(!isDirectory && !isLink, NSURLIsRegularFileKey);
    values.setObject(isLink, NSURLIsSymbolicLinkKey);
    values.setObject(isDirectory, NSURLIsDirectoryKey);
    values.setObject(false, NSURLIsPackageKey);
    values.setObject(path == "/" || (isDirectory && isVolume()), NSURLIsVolumeKey);
    values.setObject(name.hasPrefix("."), NSURLIsHiddenKey);
    values.setObject(target != nullptr && target->readable, NSURLIsReadableKey);
    values.setObject(target != nullptr, NSURLIsWritableKey);
    values.setObject(target != nullptr && std::holds_alternative<Directory>(target->content), NSURLIsExecutableKey);
    if (const std::optional<NSString> canonical = resolved(path)) {
        values.setObject(*canonical, NSURLCanonicalPathKey);
    }
    NSMutableDictionary wanted;
    for (const NSString& key : keys) {
        const auto told = entry->resourceValues.find(key);
        const Value* known = values.objectForKey(key);
        if (told != entry->resourceValues.end() ? told->second.has_value() : known != nullptr) {
            wanted.setObject(told != entry->resourceValues.end() ? *told->second : *known, key);
        }
    }
    return wanted.copy();
}

} // namespace qk::platform::memory
