// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Value.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

/// Strings of any units, read as numbers, paths and URLs. Beyond not crashing, what is taken apart goes together again.
namespace qk {
namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void checkNumbers(const NSString& text) {
    const std::int64_t number = text.integerValue();
    require(NSString::fromInteger(number).integerValue() == number);
    require(text.intValue() == std::clamp<std::int64_t>(number, INT32_MIN, INT32_MAX));
    require(!std::isnan(text.doubleValue()));
    const bool hasExponent = text.contains(u"e") || text.contains(u"E");
    const bool isExact = std::abs(number / 2) < (std::int64_t{1} << 51); // below 2^52 a double holds every integer
    const double fraction = std::abs(text.doubleValue()) - std::abs(static_cast<double>(number));
    require(!isExact || hasExponent || (fraction >= 0 && fraction <= 1)); // 1 for 0.99999999999999999999
    require(number == 0 || text.boolValue());
}

void checkPaths(const NSString& text) {
    const NSString tidy = text.stringByAppendingPathComponent("");
    require(tidy.stringByAppendingPathComponent("") == tidy);
    require(!tidy.contains(u"//"));
    require(text.stringByDeletingLastPathComponent().stringByAppendingPathComponent(text.lastPathComponent()) == tidy);
    const NSString extension = text.pathExtension();
    const NSString stem = text.stringByDeletingPathExtension();
    require((extension.isEmpty() ? stem : stem + "." + extension) == tidy);
    NSString joined;
    for (const NSString& component : text.pathComponents()) {
        require(!component.isEmpty());
        joined = joined.stringByAppendingPathComponent(component);
    }
    require(joined == tidy);
    if (const auto extended = text.stringByAppendingPathExtension("x")) {
        require(extended->pathExtension() == "x" || extended->lastPathComponent() == ".x");
    }
}

void checkURLs(const NSString& text) {
    if (const auto url = NSURL::URLWithString(text)) {
        require(url->absoluteString() == text);
        require(!url->isFileURL() || url->scheme().has_value());
        require(url->query().has_value() ==
                (text.substringToIndex(text.find(u"#").value_or(text.length())).contains(u"?")));
        require(url->fragment().has_value() == text.contains(u"#"));
        const auto path = url->path();
        require(!path.has_value() || path->length() <= text.length());
        const auto host = url->host();
        require(!host.has_value() || !host->isEmpty());
    }
    if (const auto escaped = CFURLCreateStringByAddingPercentEscapes(text)) {
        require(CFURLCreateStringByReplacingPercentEscapes(*escaped) == text);
    }
    if (const auto removed = CFURLCreateStringByReplacingPercentEscapes(text)) {
        require(removed->length() <= text.length());
    }
    if (const auto url = NSURL::fileURLWithPath(text, true)) {
        require(NSURL::URLWithString(url->absoluteString()) == url);
        require(url->hasDirectoryPath() && url->isFileURL() && url->path().has_value());
    }
}

void checkTexts(const NSString& text) {
    const NSString trimmed = text.stringByTrimmingWhitespace();
    require(trimmed.stringByTrimmingWhitespace() == trimmed);
    require(text.contains(trimmed.units()) == !trimmed.isEmpty());
    const NSString half = text.substringToIndex(text.length() / 4);
    require(half.isEmpty() || text.find(half.units()) == 0U);
    require(text.findLast(half.units()).has_value() == !half.isEmpty());
    require(text.stringByReplacingOccurrencesOfString(half, half) == text);
    const Value nested = NSDictionary{{text, NSArray{text, half}}};
    require(nested == Value(NSDictionary{{text, NSArray{text, half}}}));
    const NSString description = nested.description();
    for (const char16_t unit : description.units()) {
        require(unit == u'\n' || (unit >= u' ' && unit < 0x7F));
    }
}

void checkForms(std::string_view bytes, const NSString& units) {
    const auto decoded = NSString::fromUTF8(bytes);
    require(!decoded.has_value() || decoded->utf8() == bytes);
    require(NSString::fromUTF8(units.utf8Lossy()).has_value());
    require(NSString::fromUTF32NoCopy(units.utf32Lossy()).has_value());
    require(units.utf8().has_value() == units.utf32().has_value());
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::u16string raw(size / 2, u'\0');
    if (size > 1) { // the data may be null when there are none
        std::memcpy(raw.data(), data, size / 2 * 2);
    }
    const qk::NSString units{raw};
    qk::checkForms(bytes, units);
    for (const qk::NSString& text : {units, qk::NSString::fromUTF8Lossy(bytes)}) {
        qk::checkNumbers(text);
        qk::checkPaths(text);
        qk::checkURLs(text);
        qk::checkTexts(text);
    }
    return 0;
}
