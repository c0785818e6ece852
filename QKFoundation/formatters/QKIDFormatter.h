// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/formatters/QKIDFormatterBase.h"

namespace qk {

/// `QKIDFormatter`: partner IDs, up to ten digits in groups of three from the right ("1 234 567 890").
/// Threads: one at a time.
class QK_EXPORT QKIDFormatter : public QKIDFormatterBase {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`.
    [[nodiscard]] static std::shared_ptr<QKIDFormatter> init();

    /// `selfSetup`. Makes every character but the ASCII digits none of an identifier.
    void selfSetup() override;

    [[nodiscard]] NSString separator() const override;                 ///< one blank
    [[nodiscard]] std::uint64_t firstSeparatorIndex() const override;  ///< 3
    [[nodiscard]] std::uint64_t secondSeparatorIndex() const override; ///< 6
    [[nodiscard]] std::uint64_t thirdSeparatorIndex() const override;  ///< 9
    [[nodiscard]] std::uint64_t maximumIDLength() const override;      ///< 10
    [[nodiscard]] NSString baseIDString() const override;              ///< ""

protected:
    QKIDFormatter() = default;
};

} // namespace qk
