// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/formatters/QKIDFormatterBase.h"

namespace qk {

/// `QKMeetingIDFormatter`: meeting IDs, "m" and up to eight digits in groups of two, three and three from the left
/// ("m12-345-678").
/// Threads: one at a time.
class QK_EXPORT QKMeetingIDFormatter : public QKIDFormatterBase {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`.
    [[nodiscard]] static std::shared_ptr<QKMeetingIDFormatter> init();

    /// `selfSetup`. Makes every character but the ASCII digits none of an identifier.
    void selfSetup() override;

    [[nodiscard]] NSString separator() const override;                 ///< "-"
    [[nodiscard]] std::uint64_t firstSeparatorIndex() const override;  ///< 2
    [[nodiscard]] std::uint64_t secondSeparatorIndex() const override; ///< 5
    [[nodiscard]] std::uint64_t thirdSeparatorIndex() const override;  ///< `QKIDFormatter_NoSeparatorIndex`
    [[nodiscard]] std::uint64_t maximumIDLength() const override;      ///< 9
    [[nodiscard]] NSString baseIDString() const override;              ///< "m"

    /// `validateID:`. As that of the base, with the separators' positions counted from the left.
    ///
    /// Deliberate: the positions assume a prefix of one character, whatever the prefix of a subclass.
    [[nodiscard]] NSString validateID(const NSString& input) const override;

protected:
    QKMeetingIDFormatter() = default;
};

} // namespace qk
