// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSTimeZone.h"

#include <utility>

namespace qk {

struct NSTimeZone::Rules {
    NSString name;
    std::int64_t seconds = 0;
    std::optional<NSString> abbreviation;
};

NSTimeZone::NSTimeZone(std::shared_ptr<const Rules> rules) noexcept : rules_(std::move(rules)) {}

NSTimeZone NSTimeZone::UTC() {
    return fixed("UTC", 0, NSString("UTC"));
}

NSTimeZone NSTimeZone::fixed(const NSString& name, std::int64_t seconds, const std::optional<NSString>& abbreviation) {
    return NSTimeZone(std::make_shared<const Rules>(Rules{name, seconds, abbreviation}));
}

const NSString& NSTimeZone::name() const noexcept {
    return rules_->name;
}

bool operator==(const NSTimeZone& left, const NSTimeZone& right) noexcept {
    return left.name() == right.name();
}

} // namespace qk
