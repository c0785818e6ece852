// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include <algorithm>

namespace qk {

namespace {

using Units = std::u16string_view;

Units withoutTrailingSlashes(Units path) {
    const std::size_t last = path.find_last_not_of(u'/');
    return last == Units::npos ? path.substr(0, std::min<std::size_t>(path.size(), 1)) : path.substr(0, last + 1);
}

/// `path` with one "/" for every run of them and none at its end, "/" itself apart.
NSString tidied(const NSString& path) {
    const Units units = path.units();
    if (!path.contains(u"//")) {
        return path.substringToIndex(withoutTrailingSlashes(units).size());
    }
    std::u16string result;
    std::unique_copy(units.begin(), units.end(), std::back_inserter(result),
                     [](char16_t left, char16_t right) { return left == u'/' && right == u'/'; });
    return NSString(withoutTrailingSlashes(result));
}

/// The last component of a path without trailing slashes.
Units lastComponent(Units path) {
    const std::size_t slash = path.rfind(u'/');
    return slash == Units::npos || path.size() == 1 ? path : path.substr(slash + 1);
}

/// The length of "." and extension at the end of `component`; 0 when it has no extension.
std::size_t dottedExtensionLength(Units component) {
    const std::size_t dot = component.rfind(u'.');
    return dot == Units::npos || dot == 0 || dot + 1 == component.size() ? 0 : component.size() - dot;
}

} // namespace

NSString NSString::lastPathComponent() const {
    const Units path = withoutTrailingSlashes(units());
    const Units component = lastComponent(path);
    return substring(path.size() - component.size(), component.size());
}

NSString NSString::pathExtension() const {
    const Units component = lastComponent(withoutTrailingSlashes(units()));
    const std::size_t dotted = dottedExtensionLength(component);
    return dotted == 0 ? NSString() : NSString(component.substr(component.size() - dotted + 1));
}

NSString NSString::stringByDeletingLastPathComponent() const {
    const NSString path = tidied(*this);
    const std::size_t slash = path.units().rfind(u'/');
    if (slash == Units::npos) {
        return {};
    }
    return path.substringToIndex(std::max<std::size_t>(slash, 1));
}

NSString NSString::stringByDeletingPathExtension() const {
    const NSString path = tidied(*this);
    return path.substringToIndex(path.length() - dottedExtensionLength(lastComponent(path.units())));
}

NSString NSString::stringByAppendingPathComponent(const NSString& component) const {
    return tidied(isEmpty() ? component : *this + "/" + component);
}

std::optional<NSString> NSString::stringByAppendingPathExtension(const NSString& extension) const {
    const NSString path = tidied(*this);
    const bool isUserAlone = path.units().starts_with(u'~') && !contains(u"/");
    if (path.isEmpty() || path == "/" || isUserAlone) {
        return std::nullopt;
    }
    return path + "." + extension;
}

std::vector<NSString> NSString::pathComponents() const {
    std::vector<NSString> components;
    const Units path = units();
    if (path.starts_with(u'/')) {
        components.emplace_back("/");
    }
    std::size_t index = 0;
    while ((index = path.find_first_not_of(u'/', index)) != Units::npos) {
        const std::size_t end = std::min(path.find(u'/', index), path.size());
        components.push_back(substring(index, end - index));
        index = end;
    }
    const bool isRoot = path.find_first_not_of(u'/') == Units::npos;
    if (path.ends_with(u'/') && !isRoot) {
        components.emplace_back("/");
    }
    return components;
}

} // namespace qk
