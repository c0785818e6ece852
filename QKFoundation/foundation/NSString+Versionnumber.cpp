// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Versionnumber.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <cstddef>
#include <vector>

namespace qk::NSString_Versionnumber {
namespace {

// The number at `index` of a text that has at least `least` pieces; 0 for one that has fewer.
std::int64_t numberAt(const NSString& version, std::size_t index, std::size_t least) {
    const std::vector<NSString> pieces = version.componentsSeparatedByString(".");
    if (pieces.size() < least) {
        return 0;
    }
    if (index >= pieces.size()) {
        throw NSRangeException("index " + NSString::fromUnsignedInteger(index) + " beyond bounds [0 .. " +
                               NSString::fromUnsignedInteger(pieces.size() - 1) + "]");
    }
    return pieces[index].integerValue();
}

} // namespace

std::int64_t majorVersion(const NSString& self) {
    return numberAt(self, 0, 1);
}

std::int64_t minorVersion(const NSString& self) {
    return numberAt(self, 1, 1);
}

std::int64_t buildNumber(const NSString& self) {
    return numberAt(self, 2, 2);
}

} // namespace qk::NSString_Versionnumber
