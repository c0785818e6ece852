// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Newlines.h"

#include <string_view>

namespace qk::NSString_Newlines {

NSString stringByReplacingWindowsNewlinesWithUnixNewlines(const NSString& self) {
    return self.stringByReplacingOccurrencesOfString("\r\n", "\n");
}

NSString stringByReplacingUnixNewlinesWithWindowsNewLines(const NSString& self) {
    return stringByReplacingWindowsNewlinesWithUnixNewlines(self).stringByReplacingOccurrencesOfString("\n", "\r\n");
}

NSString stringByAppendingNullCharacter(const NSString& self) {
    return self + NSString(std::u16string_view(u"\0", 1));
}

} // namespace qk::NSString_Newlines
