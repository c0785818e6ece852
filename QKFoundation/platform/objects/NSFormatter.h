// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSAttributedString.h"
#include "QKFoundation/platform/objects/NSCoder.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/values/NSRange.h"

#include <concepts>
#include <memory>
#include <optional>

namespace qk {

/// `NSFormatter`: turns objects into the text of a field and back, and has a say in every edit of that text.
///
/// A field calls `isPartialStringValid` after each edit, before it shows it. Threads: one at a time, as a rule that of
/// the user interface.
class QK_EXPORT NSFormatter : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `stringForObjectValue:`. The text that a field shows for `objectValue`; nothing when it is none that this
    /// formatter shows. Raises `NSInvalidArgumentException` here: every formatter has its own.
    [[nodiscard]] virtual std::optional<NSString> stringForObjectValue(const std::optional<Value>& objectValue) const;

    /// `attributedStringForObjectValue:withDefaultAttributes:`. Nothing here: a field then takes the plain text.
    [[nodiscard]] virtual std::optional<NSAttributedString>
    attributedStringForObjectValue(const std::optional<Value>& objectValue,
                                   const NSDictionary& withDefaultAttributes) const;

    /// `getObjectValue:forString:errorDescription:`. Stores the object that `forString` stands for; false when it
    /// stands for none, with the reason in `errorDescription` where a formatter gives one. Raises
    /// `NSInvalidArgumentException` here: every formatter has its own.
    virtual bool getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                                std::optional<NSString>& errorDescription) const;

    /// `isPartialStringValid:proposedSelectedRange:originalString:originalSelectedRange:errorDescription:`. Judges an
    /// edit. True accepts `partialString` as it was proposed. False corrects or refuses it: when the formatter replaced
    /// `partialString`, the field shows that with the caret of `proposedSelectedRange`, and else the text before the
    /// edit. A text may be replaced by an equal one, so that is a matter of its `storage()`, which is another one then.
    /// `originalString` and `originalSelectedRange` are the text and the selection before the edit.
    /// Accepts everything here.
    virtual bool isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange,
                                      const NSString& originalString, NSRange originalSelectedRange,
                                      std::optional<NSString>& errorDescription) const;

protected:
    NSFormatter() = default;

    /// A `T`, whose constructors may be protected; the factories of formatters make their objects with it.
    template <std::derived_from<NSFormatter> T>
    [[nodiscard]] static std::shared_ptr<T> allocate() {
        struct Made final : T {};
        return std::make_shared<Made>();
    }
};

} // namespace qk
