// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSFormatter.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKStringLengthFormatter`: shows a label in the place of a text that is too long, as on a badge that counts: "7",
/// "42", "99+".
/// Subclasses are made by `QKStringLengthFormatter::init<Subclass>()` and `initWithCoder<Subclass>(coder)`.
/// Threads: one at a time.
class QK_EXPORT QKStringLengthFormatter : public NSFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. A formatter of the class `T`, whose `selfSetup` has run.
    template <std::derived_from<QKStringLengthFormatter> T = QKStringLengthFormatter>
    [[nodiscard]] static std::shared_ptr<T> init() {
        auto formatter = allocate<T>();
        static_cast<QKStringLengthFormatter&>(*formatter).selfSetup();
        return formatter;
    }

    /// `initWithCoder:`. As `init`.
    template <std::derived_from<QKStringLengthFormatter> T = QKStringLengthFormatter>
    [[nodiscard]] static std::shared_ptr<T> initWithCoder(const NSCoder& /*coder*/) {
        return QKStringLengthFormatter::init<T>();
    }

    /// `selfSetup`. Sets a greatest length of 2 and the label "99+".
    virtual void selfSetup();

    /// `maxLength`. In UTF-16 units.
    [[nodiscard]] std::uint64_t maxLength() const noexcept { return maxLength_; }
    void setMaxLength(std::uint64_t length);

    /// `overflowLabel`. What is shown for a longer text, however long it is itself.
    [[nodiscard]] const std::optional<NSString>& overflowLabel() const noexcept { return overflowLabel_; }
    void setOverflowLabel(std::optional<NSString> label);

    /// `stringForObjectValue:`. The text, or that of a number or of an object that has a `stringValue`; `overflowLabel`
    /// when it is too long. Nothing for every other value.
    [[nodiscard]] std::optional<NSString> stringForObjectValue(const std::optional<Value>& objectValue) const override;

    /// `getObjectValue:forString:errorDescription:`. Stores what is shown for `forString`; always true.
    ///
    /// Deliberate: for a text that is too long that is the label, since there is no way back to the number.
    bool getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                        std::optional<NSString>& errorDescription) const override;

protected:
    QKStringLengthFormatter() = default;

private:
    std::uint64_t maxLength_ = 0;
    std::optional<NSString> overflowLabel_;
};

} // namespace qk
