// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"

namespace qk {

/// `NSNumberFormatter`: numbers as their digits. Only what the fields of this library ask of it: plain decimal numbers.
class QK_EXPORT NSNumberFormatter : public NSFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`.
    [[nodiscard]] static std::shared_ptr<NSNumberFormatter> init();

    /// `stringForObjectValue:`. The number's `stringValue`; nothing for what is no number.
    [[nodiscard]] std::optional<NSString> stringForObjectValue(const std::optional<Value>& objectValue) const override;

    /// `getObjectValue:forString:errorDescription:`. The number that the whole text is: an integer, or a floating
    /// number when it is written as one or is too large. Blanks around it are skipped; the empty text is nothing, and
    /// succeeds. False for every other text.
    bool getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                        std::optional<NSString>& errorDescription) const override;

protected:
    NSNumberFormatter() = default;
};

} // namespace qk
