// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"

#include <functional>
#include <utility>

namespace qk::info {

/// What a formatter was asked, and may change.
struct ProposedEdit {
    NSString& text;
    NSRange& selection;
    NSString original;
    NSRange originalSelection;
};

/// A formatter that does what a test says.
class ScriptedFormatter final : public NSFormatter {
public:
    using Judge = std::function<bool(ProposedEdit&)>;

    explicit ScriptedFormatter(Judge judge) : judge_(std::move(judge)) {}

    bool isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange, const NSString& originalString,
                              NSRange originalSelectedRange,
                              std::optional<NSString>& /*errorDescription*/) const override {
        ProposedEdit edit{partialString, proposedSelectedRange, originalString, originalSelectedRange};
        return judge_(edit);
    }

private:
    Judge judge_;
};

} // namespace qk::info
