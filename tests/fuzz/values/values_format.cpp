// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringFormat.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

/// Formats with any placeholders. The first byte says how many arguments there are; beyond not crashing, what no
/// directive stands for is kept, and one that has its argument is gone.
namespace qk {
namespace {

using Arguments = std::vector<std::optional<Value>>;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

std::size_t percentSigns(const NSString& text) {
    std::size_t count = 0;
    for (const char16_t unit : text.units()) {
        count += unit == u'%' ? 1 : 0;
    }
    return count;
}

void check(const NSString& format, std::size_t count) {
    const NSString kept = stringWithFormat(format, {});
    require(kept.length() <= format.length());
    require(percentSigns(kept) <= percentSigns(format));
    require(format.contains(u"%%") || kept == format);
    Arguments arguments;
    for (std::size_t index = 0; index < count; ++index) {
        arguments.emplace_back(index % 3 == 2 ? std::nullopt : std::optional<Value>(static_cast<int>(index)));
    }
    const NSString result = stringWithFormat(format, arguments);
    require(result.length() <= format.length() * 6);
    // Arguments of the same text make no difference in what is kept.
    const Arguments empty(count, std::optional<Value>(""));
    require(percentSigns(stringWithFormat(format, empty)) == percentSigns(result));
    const NSString plain = NSString(u"a") + format + NSString(u"b");
    require(stringWithFormat(plain, arguments) == NSString(u"a") + result + NSString(u"b") || format.hasSuffix("%") ||
            format.hasSuffix("$"));
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    constexpr std::size_t kMostArguments = 13;
    const qk::NSString format = qk::NSString::fromUTF8Lossy({reinterpret_cast<const char*>(data) + 1, size - 1});
    qk::check(format, data[0] % kMostArguments);
    return 0;
}
