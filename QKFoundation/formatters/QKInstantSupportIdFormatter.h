// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/formatters/QKMeetingIDFormatter.h"

namespace qk {

/// `QKInstantSupportIdFormatter`: instant-support codes, as meeting IDs with the prefix "s" ("s12-345-678").
/// Threads: one at a time.
class QK_EXPORT QKInstantSupportIdFormatter : public QKMeetingIDFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`.
    [[nodiscard]] static std::shared_ptr<QKInstantSupportIdFormatter> init();

    [[nodiscard]] NSString baseIDString() const override; ///< "s"

protected:
    QKInstantSupportIdFormatter() = default;
};

} // namespace qk
