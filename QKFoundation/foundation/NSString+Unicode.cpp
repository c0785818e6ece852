// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Unicode.h"
#include "QKFoundation/foundation/internal/WideStrings.h"

namespace qk::NSString_Unicode {

NSString stringWithStdString(const std::string& narrow) {
    return initWithStdString(narrow);
}

NSString initWithStdString(const std::string& narrow) {
    return NSString::fromUTF8(narrow).value_or(NSString());
}

NSString stringWithWString(const std::wstring& wide) {
    return initWithWString(wide);
}

NSString initWithWString(const std::wstring& wide) {
    return NSString::fromUTF32(internal::upToFirstNul(wide)).value_or(NSString());
}

std::optional<NSString> stringWithWStringNoCopy(const std::wstring& wide) {
    return initWithWStringNoCopy(wide);
}

std::optional<NSString> initWithWStringNoCopy(const std::wstring& wide) {
    return NSString::fromUTF32NoCopy(internal::upToFirstNul(wide));
}

std::wstring wstringFrom(const std::optional<NSString>& string) {
    return string.has_value() ? string->utf32().value_or(std::wstring()) : std::wstring();
}

std::wstring wstringFromDecomposed(const std::optional<NSString>& string) {
    return string.has_value() ? wstringFrom(string->precomposedStringWithCanonicalMapping()) : std::wstring();
}

} // namespace qk::NSString_Unicode
