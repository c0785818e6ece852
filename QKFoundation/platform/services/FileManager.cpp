// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/FileManager.h"

#include "QKFoundation/platform/services/ResourceKeys.h"

#include <algorithm>
#include <utility>

namespace qk::platform {
namespace {

bool isTrue(const NSDictionary& values, const NSString& key) {
    const auto* number = values.get<NSNumber>(key);
    return number != nullptr && number->boolValue();
}

// The paths of a folder's entries, in descending order: the first one is taken from the back.
std::vector<NSString> entriesOf(const FileManager& files, const NSString& folder) {
    std::vector<NSString> paths;
    if (auto names = files.contentsOfDirectoryAtPath(folder)) {
        std::ranges::sort(*names, std::ranges::greater());
        for (const NSString& name : *names) {
            paths.push_back(folder.stringByAppendingPathComponent(name));
        }
    }
    return paths;
}

NSDictionary valuesOfKeys(const NSDictionary& values, const std::vector<NSString>& keys) {
    std::vector<NSDictionary::Entry> entries;
    for (const NSString& key : keys) {
        if (const Value* value = values.objectForKey(key)) {
            entries.emplace_back(key, *value);
        }
    }
    return NSDictionary(std::move(entries));
}

} // namespace

std::vector<EnumeratedItem> FileManager::enumeratorAtURL(const NSURL& url,
                                                         const std::vector<NSString>& includingPropertiesForKeys,
                                                         NSDirectoryEnumerationOptions options) const {
    const auto asks = [options](NSDirectoryEnumerationOptions option) { return (options & option) != 0; };
    const bool skipsHidden = asks(NSDirectoryEnumerationSkipsHiddenFiles);
    std::vector<NSString> keys = includingPropertiesForKeys;
    keys.insert(keys.end(), {NSURLIsDirectoryKey, NSURLIsPackageKey, NSURLIsHiddenKey});

    std::vector<EnumeratedItem> items;
    const std::optional<NSString> folder = url.isFileURL() ? url.path() : std::nullopt;
    // A stack instead of calls within calls: nobody says how deep the folders are.
    std::vector<NSString> pending = folder.has_value() ? entriesOf(*this, *folder) : std::vector<NSString>();
    while (!pending.empty()) {
        const NSString path = std::move(pending.back());
        pending.pop_back();
        const std::optional<NSURL> plain = NSURL::fileURLWithPath(path);
        const auto values = plain.has_value() ? resourceValuesForKeys(*plain, keys) : std::nullopt;
        if (!values.has_value() || (skipsHidden && isTrue(*values, NSURLIsHiddenKey))) {
            continue;
        }
        const bool isDirectory = isTrue(*values, NSURLIsDirectoryKey);
        items.push_back(
            {NSURL::fileURLWithPath(path, isDirectory).value(), valuesOfKeys(*values, includingPropertiesForKeys)});
        const bool skipsContent =
            asks(NSDirectoryEnumerationSkipsSubdirectoryDescendants) ||
            (asks(NSDirectoryEnumerationSkipsPackageDescendants) && isTrue(*values, NSURLIsPackageKey));
        if (isDirectory && !skipsContent) {
            std::ranges::move(entriesOf(*this, path), std::back_inserter(pending));
        }
    }
    return items;
}

} // namespace qk::platform
