// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSNumberFormatter.h"
#include "QKFoundation/platform/values/NSCharacterSet.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace qk {

/// `QKDecimalNumberFormatter`: a field of digits with a greatest length. It refuses edits and corrects none.
///
/// Made for interface files: `initWithCoder` sets it up, and the owner of one made by `init` sets both properties.
/// Subclasses are made by `QKDecimalNumberFormatter::initWithCoder<Subclass>(coder)` and `init<Subclass>()`.
/// Threads: one at a time.
class QK_EXPORT QKDecimalNumberFormatter : public NSNumberFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. Deliberate: the greatest length is 0 and there is no character set, so every text but "" is refused.
    template <std::derived_from<QKDecimalNumberFormatter> T = QKDecimalNumberFormatter>
    [[nodiscard]] static std::shared_ptr<T> init() {
        return allocate<T>();
    }

    /// `initWithCoder:`. Any number of ASCII digits is valid; a subclass may say less in `setUpWithCoder`.
    template <std::derived_from<QKDecimalNumberFormatter> T = QKDecimalNumberFormatter>
    [[nodiscard]] static std::shared_ptr<T> initWithCoder(const NSCoder& coder) {
        auto formatter = allocate<T>();
        static_cast<QKDecimalNumberFormatter&>(*formatter).setUpWithCoder(coder);
        return formatter;
    }

    /// `maxLength`. In UTF-16 units.
    [[nodiscard]] std::uint64_t maxLength() const noexcept { return maxLength_; }
    void setMaxLength(std::uint64_t length);

    /// `invalidCharactersSet`. The characters that a text may not have; nothing lets all of them through.
    [[nodiscard]] const std::optional<NSCharacterSet>& invalidCharactersSet() const noexcept {
        return invalidCharactersSet_;
    }
    void setInvalidCharactersSet(std::optional<NSCharacterSet> set) { invalidCharactersSet_ = std::move(set); }

    /// `isPartialStringValid:proposedSelectedRange:originalString:originalSelectedRange:errorDescription:`. False for
    /// a text that is too long or has an invalid character: the field keeps the text before the edit. Nothing that is
    /// handed in changes.
    bool isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange, const NSString& originalString,
                              NSRange originalSelectedRange, std::optional<NSString>& errorDescription) const override;

protected:
    QKDecimalNumberFormatter() = default;

    /// What `initWithCoder` does to the new formatter. Overrides call that of their superclass first.
    virtual void setUpWithCoder(const NSCoder& coder);

private:
    std::uint64_t maxLength_ = 0;
    std::optional<NSCharacterSet> invalidCharactersSet_;
};

} // namespace qk
