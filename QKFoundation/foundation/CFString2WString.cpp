// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/CFString2WString.h"

#include "QKFoundation/foundation/NSString+Unicode.h"
#include "QKFoundation/foundation/internal/WideStrings.h"

#include <optional>

namespace qk {

std::wstring CFString2WString(CFStringRef string) {
    return string != nullptr ? NSString::sharing(string).utf32Lossy(L'?') : std::wstring();
}

CFStringHolder WString2CFString(const std::wstring& wide) {
    const std::optional<NSString> string = NSString::fromUTF32(internal::upToFirstNul(wide));
    return string.has_value() ? CFStringHolder(CFRetain(string->storage())) : CFStringHolder();
}

std::wstring PrecomposedWString(const std::wstring& wide) {
    return NSString_Unicode::wstringFromDecomposed(NSString_Unicode::stringWithWString(wide));
}

} // namespace qk
