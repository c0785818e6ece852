// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Binary.h"

#include <string>

namespace qk::NSString_Binary {

NSString binaryStringWithInteger(std::uint64_t number) {
    constexpr unsigned kBits = 64;
    constexpr unsigned kGroup = 8;
    std::u16string digits;
    digits.reserve(kBits + kBits / kGroup);
    for (unsigned bit = kBits; bit-- != 0;) {
        digits += (number >> bit & 1U) != 0 ? u'1' : u'0';
        if (bit % kGroup == 0 && bit != 0) {
            digits += u' ';
        }
    }
    return NSString(digits);
}

} // namespace qk::NSString_Binary
