// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSURL.h"

#include "QKFoundation/platform/values/PercentEscapes.h"
#include "QKFoundation/platform/values/UnitClasses.h"

#include <algorithm>

namespace qk {

namespace {

using Units = std::u16string_view;

constexpr Units kLegalMarks = u"!$&'()*+,-./:;=?@_~[]";

constexpr bool isLetterOrDigit(char16_t unit) {
    return internal::isASCIILetter(unit) || internal::isASCIIDigit(unit);
}

/// Whether every unit can stand in a URL, with at most one "#" and complete escapes.
bool isLegal(Units text) {
    bool sawFragment = false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char16_t unit = text[index];
        if (unit == u'#') {
            if (std::exchange(sawFragment, true)) {
                return false;
            }
        } else if (unit == u'%') {
            if (!internal::isEscape(text, index)) {
                return false;
            }
        } else if (!isLetterOrDigit(unit) && kLegalMarks.find(unit) == Units::npos) {
            return false;
        }
    }
    return true;
}

/// What may stand bare in the path of a file URL.
bool isKeptInPath(char byte) {
    constexpr std::string_view kMarks = "!$&'()*+,-./:=@_~";
    const auto unit = static_cast<char16_t>(static_cast<unsigned char>(byte));
    return isLetterOrDigit(unit) || kMarks.find(byte) != std::string_view::npos;
}

/// What needs no escape anywhere in a URL; "#" is kept so that a fragment survives.
bool isKeptInURL(char byte) {
    constexpr std::string_view kEscaped = "%\"<>\\^`{|}[]";
    return byte > ' ' && byte < 0x7F && kEscaped.find(byte) == std::string_view::npos;
}

/// The parts of a URL's text, all still escaped. One that is not there has no data, which is not the same as an empty
/// one.
struct Parts {
    std::optional<Units> scheme;
    std::optional<Units> authority;
    Units path;
    std::optional<Units> query;
    std::optional<Units> fragment;
};

/// Cuts `text` at the first unit of `marks`. Returns what was in front; `text` keeps the rest, mark included.
Units takeUntil(Units& text, Units marks) {
    const Units head = text.substr(0, text.find_first_of(marks));
    text.remove_prefix(head.size());
    return head;
}

bool isScheme(Units text) {
    return !text.empty() && internal::isASCIILetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [](char16_t unit) {
               return isLetterOrDigit(unit) || unit == u'+' || unit == u'-' || unit == u'.';
           });
}

Parts parse(Units text) {
    Parts parts;
    Units rest = text;
    const Units head = takeUntil(rest, u":/?#");
    if (rest.starts_with(u':') && isScheme(head)) {
        parts.scheme = head;
        rest.remove_prefix(1);
    } else {
        rest = text;
    }
    if (rest.starts_with(u"//")) {
        rest.remove_prefix(2);
        parts.authority = takeUntil(rest, u"/?#");
    }
    parts.path = takeUntil(rest, u"?#");
    if (rest.starts_with(u'?')) {
        rest.remove_prefix(1);
        parts.query = takeUntil(rest, u"#");
    }
    if (rest.starts_with(u'#')) {
        parts.fragment = rest.substr(1);
    }
    return parts;
}

std::optional<NSString> asString(std::optional<Units> part) {
    return part.has_value() ? std::optional(NSString(*part)) : std::nullopt;
}

} // namespace

std::optional<NSURL> NSURL::URLWithString(const NSString& text) {
    if (text.isEmpty() || !isLegal(text.units())) {
        return std::nullopt;
    }
    return NSURL(text);
}

std::optional<NSURL> NSURL::fileURLWithPath(const NSString& path, bool isDirectory) {
    if (!path.isAbsolutePath()) {
        return std::nullopt;
    }
    const std::size_t end = path.units().find_last_not_of(u'/');
    const NSString trimmed = end == Units::npos ? NSString() : path.substringToIndex(end + 1);
    const bool needsSlash = isDirectory || trimmed.isEmpty();
    const auto escaped = internal::addingEscapes(needsSlash ? trimmed + "/" : trimmed, isKeptInPath);
    if (!escaped.has_value()) {
        return std::nullopt;
    }
    return NSURL("file://" + *escaped);
}

std::optional<NSString> NSURL::scheme() const {
    return asString(parse(text_.units()).scheme);
}

std::optional<NSString> NSURL::host() const {
    const std::optional<Units> authority = parse(text_.units()).authority;
    if (!authority.has_value()) {
        return std::nullopt;
    }
    Units host = *authority;
    host.remove_prefix(host.rfind(u'@') + 1); // "not found" plus one is 0
    const std::size_t bracket = host.find(u']');
    if (host.starts_with(u'[') && bracket != Units::npos) {
        host = host.substr(1, bracket - 1);
    } else {
        host = host.substr(0, host.rfind(u':'));
    }
    return host.empty() ? std::nullopt : internal::removingEscapes(NSString(host));
}

std::optional<NSString> NSURL::path() const {
    const Parts parts = parse(text_.units());
    Units path = parts.path;
    const bool hasHierarchy = !parts.scheme.has_value() || parts.authority.has_value() || path.starts_with(u'/');
    if (!hasHierarchy) {
        return std::nullopt;
    }
    while (path.size() > 1 && path.ends_with(u'/')) {
        path.remove_suffix(1);
    }
    return internal::removingEscapes(NSString(path));
}

std::optional<NSString> NSURL::query() const {
    return asString(parse(text_.units()).query);
}

std::optional<NSString> NSURL::fragment() const {
    return asString(parse(text_.units()).fragment);
}

bool NSURL::isFileURL() const {
    constexpr Units kFile = u"file";
    const std::optional<Units> scheme = parse(text_.units()).scheme;
    return scheme.has_value() && std::equal(scheme->begin(), scheme->end(), kFile.begin(), kFile.end(),
                                            [](char16_t unit, char16_t lower) { return (unit | 0x20) == lower; });
}

bool NSURL::hasDirectoryPath() const {
    return parse(text_.units()).path.ends_with(u'/');
}

std::optional<NSString> CFURLCreateStringByReplacingPercentEscapes(const NSString& text) {
    return internal::removingEscapes(text);
}

std::optional<NSString> CFURLCreateStringByAddingPercentEscapes(const NSString& text) {
    return internal::addingEscapes(text, isKeptInURL);
}

} // namespace qk
