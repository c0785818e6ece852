// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>
#include <optional>
#include <vector>

namespace qk {

/// `NSValueTransformer`: turns a value into another one on its way from a model to a view, and back.
/// Threads: the registry may be used anywhere at the same time.
class QK_EXPORT NSValueTransformer : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `setValueTransformer:forName:`. Registers `transformer` under a name, in the place of what was there; null takes
    /// the name away.
    static void setValueTransformer(std::shared_ptr<NSValueTransformer> transformer, const NSString& forName);

    /// `valueTransformerForName:`. Null when none is registered under that name.
    [[nodiscard]] static std::shared_ptr<NSValueTransformer> valueTransformerForName(const NSString& name);

    /// `valueTransformerNames`. Ascending.
    [[nodiscard]] static std::vector<NSString> valueTransformerNames();

    /// `allowsReverseTransformation`. Whether transformers of this class have a way back.
    [[nodiscard]] static bool allowsReverseTransformation() noexcept { return true; }

    /// `transformedValue:`. `value` itself here.
    [[nodiscard]] virtual std::optional<Value> transformedValue(const std::optional<Value>& value) const;

    /// `reverseTransformedValue:`. As `transformedValue` here.
    [[nodiscard]] virtual std::optional<Value> reverseTransformedValue(const std::optional<Value>& value) const;

protected:
    NSValueTransformer() = default;
};

} // namespace qk
