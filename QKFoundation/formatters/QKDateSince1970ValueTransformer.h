// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSValueTransformer.h"

#include <typeinfo>

namespace qk {

/// The name under which an application registers the transformer (`NSValueTransformer::setValueTransformer`). The
/// library does not register it.
inline constexpr char QKDateSince1970ValueTransformerName[] = "QKDateSince1970ValueTransformer";

/// `QKDateSince1970ValueTransformer`: milliseconds since 1970-01-01 00:00:00 UTC to dates, and back.
/// Threads: any, at the same time.
class QK_EXPORT QKDateSince1970ValueTransformer : public NSValueTransformer {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`.
    [[nodiscard]] static std::shared_ptr<QKDateSince1970ValueTransformer> init();

    /// `transformedValueClass`. The type `NSDate`.
    [[nodiscard]] static const std::type_info& transformedValueClass() noexcept;

    /// `allowsReverseTransformation`. True.
    [[nodiscard]] static bool allowsReverseTransformation() noexcept { return true; }

    /// `transformedValue:`. The date of so many whole milliseconds, negative ones before 1970. Nothing for 0, for the
    /// largest signed 64-bit number, which both stand for no date, and for what is no number.
    [[nodiscard]] std::optional<Value> transformedValue(const std::optional<Value>& value) const override;

    /// `reverseTransformedValue:`. The milliseconds of a date, a floating number with its fraction. The integer 0 for
    /// what is no date.
    ///
    /// Deliberate: not the reverse of `transformedValue` at its edges. Nothing becomes 0, and 0 becomes nothing.
    [[nodiscard]] std::optional<Value> reverseTransformedValue(const std::optional<Value>& value) const override;

protected:
    QKDateSince1970ValueTransformer() = default;
};

} // namespace qk
