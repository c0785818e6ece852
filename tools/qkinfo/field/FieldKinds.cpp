// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldKinds.h"

#include "QKFoundation/formatters/QKIDNameIPFormatter.h"
#include "QKFoundation/formatters/QKInstantSupportIdFormatter.h"
#include "QKFoundation/formatters/QKMeetingIDFormatter.h"
#include "QKFoundation/formatters/QKStringLengthFormatter.h"
#include "QKFoundation/formatters/QKTFAFormatter.h"

#include <algorithm>
#include <array>

namespace qk::info {

namespace {

template <typename Formatter>
std::shared_ptr<const NSFormatter> make() {
    return Formatter::init();
}

// One that is made for interface files is not set up otherwise.
std::shared_ptr<const NSFormatter> makeForCodes() {
    return QKTFAFormatter::initWithCoder(NSCoder());
}

constexpr std::array kKinds{
    FieldKind{"partner-id", "Partner ID", false, make<QKIDFormatter>},
    FieldKind{"id-or-name", "Partner ID or computer", false, make<QKIDNameIPFormatter>},
    FieldKind{"meeting-id", "Meeting ID", false, make<QKMeetingIDFormatter>},
    FieldKind{"support-id", "Support code", false, make<QKInstantSupportIdFormatter>},
    FieldKind{"tfa", "Two-factor code", false, makeForCodes},
    FieldKind{"count", "Count", true, make<QKStringLengthFormatter>},
};

} // namespace

std::span<const FieldKind> fieldKinds() noexcept {
    return kKinds;
}

const FieldKind* fieldKindNamed(std::string_view name) noexcept {
    const auto* const found = std::ranges::find(kKinds, name, &FieldKind::name);
    return found != kKinds.end() ? found : nullptr;
}

NSString finishedText(const FieldKind& kind, const NSFormatter& formatter, const NSString& text) {
    if (!kind.isConverted) {
        return text;
    }
    std::optional<Value> object;
    std::optional<NSString> description;
    if (!formatter.getObjectValue(object, text, description)) {
        return text;
    }
    return formatter.stringForObjectValue(object).value_or(NSString());
}

} // namespace qk::info
