// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSURL+QueryParsing.h"
#include "QKFoundation/platform/values/LowerCase.h"

#include <string>
#include <vector>

namespace qk::NSURL_QueryParsing {

std::optional<NSString> stringForQueryParameter(const NSURL& self, const NSString& name) {
    const std::u16string wanted = internal::lowerCased(name.units());
    std::optional<NSString> value;
    for (const NSString& part : self.query().value_or(NSString()).componentsSeparatedByString("&")) {
        const std::vector<NSString> pieces = part.componentsSeparatedByString("=");
        if (pieces.size() != 2) {
            continue;
        }
        const std::optional<NSString> found = CFURLCreateStringByReplacingPercentEscapes(pieces[0]);
        if (found.has_value() && internal::lowerCased(found->units()) == wanted) {
            value = CFURLCreateStringByReplacingPercentEscapes(pieces[1]);
        }
    }
    return value;
}

std::optional<NSNumber> numberForQueryParameter(const NSURL& self, const NSString& name) {
    const std::optional<NSString> value = stringForQueryParameter(self, name);
    return value.has_value() ? std::optional(NSNumber(value->integerValue())) : std::nullopt;
}

} // namespace qk::NSURL_QueryParsing
