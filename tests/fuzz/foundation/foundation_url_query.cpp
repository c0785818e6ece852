// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSURL+QueryParsing.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Queries of any text. The name asked for is the text up to the first line feed. What is found is what a plain reading
/// of the query's parts finds, and a pair that is put at the end is the one that wins.
namespace qk {
namespace {

using namespace NSURL_QueryParsing;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// How often a sign stands in a text.
std::size_t count(const NSString& text, char16_t sign) {
    std::size_t result = 0;
    for (const char16_t unit : text.units()) {
        result += unit == sign ? 1 : 0;
    }
    return result;
}

void check(const NSString& name, const NSString& query) {
    const auto escaped = CFURLCreateStringByAddingPercentEscapes(query);
    for (const auto& text : {std::optional(query), escaped}) {
        const auto url = text.has_value() ? NSURL::URLWithString("http://host/?" + *text) : std::nullopt;
        if (!url.has_value()) {
            continue;
        }
        const auto value = stringForQueryParameter(*url, name);
        require(!value.has_value() || count(*url->query(), u'=') != 0);
        require(!value.has_value() || value->length() <= url->query()->length());
        const auto number = numberForQueryParameter(*url, name);
        require(number.has_value() == value.has_value());
        require(!number.has_value() || number->integerValue() == value->integerValue());
        if (!url->fragment().has_value()) {
            const NSURL more = NSURL::URLWithString(url->absoluteString() + "&key=last&=").value();
            require(stringForQueryParameter(more, "KEY") == "last");
            require(stringForQueryParameter(more, "") == "");
            const auto again = stringForQueryParameter(more, name);
            require(again == value || again == "last" || again == "");
        }
    }
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qk::NSString text = qk::NSString::fromUTF8Lossy({reinterpret_cast<const char*>(data), size});
    const std::size_t end = text.find(u"\n").value_or(0);
    qk::check(text.substringToIndex(end), text.substringFromIndex(end == 0 ? 0 : end + 1));
    return 0;
}
