// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+ConflictResolution.h"
#include "QKFoundation/files/internal/FileNames.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace qk {
namespace {

// `text` escaped as it stands in the path of a URL, with "/" in front; nothing for a lone surrogate.
std::optional<NSString> escapedBehindSlash(const NSString& text) {
    constexpr std::u16string_view kScheme = u"file://";
    const std::optional<NSURL> url = NSURL::fileURLWithPath("/" + text);
    return url.has_value() ? std::optional(url->absoluteString().substringFromIndex(kScheme.size())) : std::nullopt;
}

// The text of a URL before and from its query or fragment.
std::pair<NSString, NSString> splitBehindPath(const NSURL& url) {
    const NSString& text = url.absoluteString();
    const std::size_t end = std::min(text.units().find_first_of(u"?#"), text.length());
    return {text.substringToIndex(end), text.substringFromIndex(end)};
}

// The name in the folder, with its extension.
std::optional<NSURL> candidate(const NSURL& folder, const NSString& name, const NSString& extension) {
    std::optional<NSURL> url = internal::URLByAppendingPathComponent(folder, name);
    return url.has_value() && !extension.isEmpty() ? internal::URLByAppendingPathExtension(*url, extension) : url;
}

} // namespace

std::optional<NSURL> internal::URLByAppendingPathComponent(const NSURL& url, const NSString& component) {
    const std::optional<NSString> escaped = escapedBehindSlash(component);
    if (!escaped.has_value() || !url.path().has_value()) {
        return escaped.has_value() ? std::optional(url) : std::nullopt;
    }
    const auto [path, rest] = splitBehindPath(url);
    return NSURL::URLWithString(path + (path.hasSuffix("/") ? escaped->substringFromIndex(1) : *escaped) + rest);
}

std::optional<NSURL> internal::URLByAppendingPathExtension(const NSURL& url, const NSString& extension) {
    const std::optional<NSString> escaped = escapedBehindSlash(extension);
    if (!escaped.has_value()) {
        return std::nullopt;
    }
    const std::optional<NSString> path = url.path();
    if (!path.has_value() || path->isEmpty() || *path == "/") {
        return url;
    }
    const auto [text, rest] = splitBehindPath(url);
    const std::size_t nameEnd = text.units().find_last_not_of(u'/') + 1;
    return NSURL::URLWithString(text.substringToIndex(nameEnd) + "." + escaped->substringFromIndex(1) + rest);
}

std::optional<NSURL> internal::availableFileURLWithName(const platform::Services& services, const NSFileManager& self,
                                                        const NSString& name, const NSString& pathExtension,
                                                        const NSURL& atURL) {
    std::optional<NSURL> url = candidate(atURL, name, pathExtension);
    const std::optional<NSString> path = url.has_value() ? url->path() : std::nullopt;
    if (!path.has_value() || !self.fileExistsAtPath(*path)) {
        return url;
    }
    constexpr std::uint64_t kFirstNumber = 2;
    for (std::uint64_t number = kFirstNumber;; ++number) {
        url = candidate(atURL, name + " " + NSString::fromUnsignedInteger(number), pathExtension);
        // Each candidate is looked for itself, also without an extension.
        if (!services.fileManager->fileExistsAtPath(url.value().path().value())) {
            return url;
        }
    }
}

std::optional<NSURL> NSFileManager_ConflictResolution::availableFileURLWithName(const NSFileManager& self,
                                                                                const NSString& name,
                                                                                const NSString& pathExtension,
                                                                                const NSURL& atURL) {
    return internal::availableFileURLWithName(*platform::services(), self, name, pathExtension, atURL);
}

} // namespace qk
