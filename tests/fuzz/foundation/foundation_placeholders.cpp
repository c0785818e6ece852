// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"
#include "QKFoundation/platform/values/NSStringFormat.h"

#include <array>
#include <cstdint>
#include <cstdlib>

/// Translated texts of any content: their placeholders turned into a format, and that filled in.
namespace qk {
namespace {

using NSString_Translation::stringByReplacingWFormatPlaceholders;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// One number after the other, each in the whole text. Takes quadratic time.
NSString replacedOneByOne(NSString text) {
    for (std::uint64_t number = 1;; ++number) {
        const NSString digits = NSString::fromUnsignedInteger(number);
        const NSString placeholder = "%" + digits + "%";
        if (!text.contains(placeholder.units())) {
            return text;
        }
        text = text.stringByReplacingOccurrencesOfString(placeholder, "%" + digits + "$@");
    }
}

void checkPlaceholders(const NSString& text) {
    constexpr std::size_t kShort = 2000;
    const NSString format = stringByReplacingWFormatPlaceholders(text);
    require(text.length() > kShort || format == replacedOneByOne(text));
    require(stringByReplacingWFormatPlaceholders(format) == format);
    require(format.length() >= text.length());
    require((format == text) == !text.contains(u"%1%"));
}

void checkFormat(const NSString& text) {
    const std::array<std::optional<Value>, 3> arguments{Value(text), std::nullopt, Value(7)};
    const NSString filled = stringWithFormat(text, arguments);
    require(filled.contains(u"%") || !text.contains(u"%%"));
    require(text.contains(u"%") || filled == text);
    const NSString escaped = text.stringByReplacingOccurrencesOfString("%", "%%");
    require(stringWithFormat(escaped, arguments) == text);
    require(stringWithFormat("%1$@", arguments) == text);
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qk::NSString text = qk::NSString::fromUTF8Lossy({reinterpret_cast<const char*>(data), size});
    qk::checkPlaceholders(text);
    qk::checkFormat(text);
    qk::checkFormat(qk::NSString_Translation::stringByReplacingWFormatPlaceholders(text));
    return 0;
}
