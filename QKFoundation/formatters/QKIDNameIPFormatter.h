// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/formatters/QKIDFormatter.h"

namespace qk {

/// `QKIDNameIPFormatter`: a field that takes a partner ID, or the name or address of a computer. Digits and blanks
/// alone are formatted as a partner ID; with any other character in it a text stays as it is typed. Threads: one at a
/// time.
class QK_EXPORT QKIDNameIPFormatter : public QKIDFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`.
    [[nodiscard]] static std::shared_ptr<QKIDNameIPFormatter> init();

    /// `validIDOnlyCharacterSet`. The characters that only a name or an address has. Nothing before `selfSetup`: every
    /// text is taken for a partner ID, then.
    [[nodiscard]] const std::optional<NSCharacterSet>& validIDOnlyCharacterSet() const noexcept {
        return validIDOnlyCharacterSet_;
    }
    void setValidIDOnlyCharacterSet(std::optional<NSCharacterSet> set) { validIDOnlyCharacterSet_ = std::move(set); }

    /// `selfSetup`. Makes every character but the ASCII digits and the separator one of names.
    void selfSetup() override;

    /// `isPartialStringValid:proposedSelectedRange:originalString:originalSelectedRange:errorDescription:`. Accepts
    /// a name or an address as it is, true; formats a partner ID as `QKIDFormatter` does.
    bool isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange, const NSString& originalString,
                              NSRange originalSelectedRange, std::optional<NSString>& errorDescription) const override;

protected:
    QKIDNameIPFormatter() = default;

private:
    std::optional<NSCharacterSet> validIDOnlyCharacterSet_;
};

} // namespace qk
