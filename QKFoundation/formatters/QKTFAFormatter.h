// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/formatters/QKDecimalNumberFormatter.h"

namespace qk {

/// `QKTFAFormatter`: a field for the codes of two-factor authentication, up to six digits.
/// Threads: one at a time.
class QK_EXPORT QKTFAFormatter : public QKDecimalNumberFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. Deliberate: not set up, as its superclass.
    [[nodiscard]] static std::shared_ptr<QKTFAFormatter> init();

    /// `initWithCoder:`. Up to six ASCII digits are valid.
    [[nodiscard]] static std::shared_ptr<QKTFAFormatter> initWithCoder(const NSCoder& coder);

protected:
    QKTFAFormatter() = default;

    void setUpWithCoder(const NSCoder& coder) override;
};

} // namespace qk
