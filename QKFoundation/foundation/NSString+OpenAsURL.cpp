// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+OpenAsURL.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

namespace qk {

bool internal::openURLString(const platform::Services& services, const NSString& string) {
    const std::optional<NSURL> url = NSURL::URLWithString(string);
    return url.has_value() && services.launchServices->openURL(*url) == platform::LaunchServices::noErr;
}

bool internal::openAsURL(const platform::Services& services, const NSString& string) {
    const std::optional<NSString> plain = CFURLCreateStringByReplacingPercentEscapes(string);
    const std::optional<NSString> escaped =
        plain.has_value() ? CFURLCreateStringByAddingPercentEscapes(*plain) : std::nullopt;
    return escaped.has_value() && openURLString(services, *escaped);
}

bool NSString_OpenAsURL::openURLString(const NSString& string) {
    return internal::openURLString(*platform::services(), string);
}

bool NSString_OpenAsURL::openAsURL(const NSString& self) {
    return internal::openAsURL(*platform::services(), self);
}

} // namespace qk
