// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSFormatter.h"
#include "QKFoundation/platform/values/NSCharacterSet.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace qk {

/// A separator position that no identifier reaches: what a formatter answers for a position that it does not use.
inline constexpr std::uint64_t QKIDFormatter_NoSeparatorIndex = 100000;

/// `QKIDFormatterBase`: formats a numeric identifier while it is typed.
///
/// Everything that is no part of an identifier is dropped, a fixed prefix put in front, what exceeds the longest
/// identifier cut off, and separators are put in at up to three positions that count from the right end; the caret
/// stays behind the character that was just typed or deleted. A subclass says which characters, prefix, length,
/// separator and positions: it overrides the getters below, `thirdSeparatorIndex` included, and sets the characters in
/// `selfSetup`.
///
/// A subclass is made by `QKIDFormatterBase::init<Subclass>()`. Its positions ascend, and its longest identifier is
/// longer than its prefix, which holds no character of an identifier.
/// Threads: one at a time, as a rule that of the user interface. Nothing is remembered between two edits.
class QK_EXPORT QKIDFormatterBase : public NSFormatter {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. A formatter of the class `T`, whose `selfSetup` has run.
    template <std::derived_from<QKIDFormatterBase> T = QKIDFormatterBase>
    [[nodiscard]] static std::shared_ptr<T> init() {
        auto formatter = allocate<T>();
        static_cast<QKIDFormatterBase&>(*formatter).selfSetup();
        return formatter;
    }

    /// `awakeFromNib`. For a formatter that comes from an interface file: runs `selfSetup`.
    virtual void awakeFromNib();

    /// `selfSetup`. Where a subclass sets its characters. May run more than once. Does nothing here.
    virtual void selfSetup();

    /// `nonIDCharacterSet`. The characters that are no part of an identifier; nothing until a subclass has set it.
    [[nodiscard]] const std::optional<NSCharacterSet>& nonIDCharacterSet() const noexcept { return nonIDCharacterSet_; }
    void setNonIDCharacterSet(std::optional<NSCharacterSet> set) { nonIDCharacterSet_ = std::move(set); }

    // What subclasses say. All but the third position are unrecognised selectors here (`doesNotRecognizeSelector`).

    /// `separator`. The text between two groups. One of several characters is put in, but not counted for the caret.
    [[nodiscard]] virtual NSString separator() const;

    /// `firstSeparatorIndex`. How many characters the last group has.
    [[nodiscard]] virtual std::uint64_t firstSeparatorIndex() const;

    /// `secondSeparatorIndex`. How many characters the last two groups have.
    [[nodiscard]] virtual std::uint64_t secondSeparatorIndex() const;

    /// `thirdSeparatorIndex`. How many characters the last three groups have; 0 here.
    [[nodiscard]] virtual std::uint64_t thirdSeparatorIndex() const;

    /// `maximumIDLength`. How many characters the longest identifier has, with its prefix and without separators.
    [[nodiscard]] virtual std::uint64_t maximumIDLength() const;

    /// `baseIDString`. The prefix of every identifier.
    [[nodiscard]] virtual NSString baseIDString() const;

    /// `validateID:`. The identifier that `input` holds, with prefix and separators. The prefix alone while there is no
    /// character set. Raises `NSRangeException` where a separator position lies outside of the text, which only
    /// positions near the largest number do.
    [[nodiscard]] virtual NSString validateID(const NSString& input) const;

    /// `countSeperatorInString:toIndex:`. How many of the first `toIndex` characters of `string` are the separator.
    [[nodiscard]] virtual std::uint64_t countSeperatorInString(const NSString& string, std::uint64_t toIndex) const;

    /// `neededSeperatorsInString:atIndex:`. How many separators an identifier of as many characters as `string` has up
    /// to `atIndex`.
    [[nodiscard]] virtual std::uint64_t neededSeperatorsInString(const NSString& string, std::uint64_t atIndex) const;

    /// `stringForObjectValue:`. The text itself: what a field holds is what it shows. Nothing for what is no text.
    [[nodiscard]] std::optional<NSString> stringForObjectValue(const std::optional<Value>& objectValue) const override;

    /// `attributedStringForObjectValue:withDefaultAttributes:`. The text with the default attributes. Nothing for what
    /// is no text.
    [[nodiscard]] std::optional<NSAttributedString>
    attributedStringForObjectValue(const std::optional<Value>& objectValue,
                                   const NSDictionary& withDefaultAttributes) const override;

    /// `getObjectValue:forString:errorDescription:`. Stores the text itself; always true.
    bool getObjectValue(std::optional<Value>& objectValue, const NSString& forString,
                        std::optional<NSString>& errorDescription) const override;

    /// `isPartialStringValid:proposedSelectedRange:originalString:originalSelectedRange:errorDescription:`. Formats
    /// an edit: `partialString` becomes the identifier in it, and the location of `proposedSelectedRange` is moved
    /// along; its length stays. False with another storage, also for an equal text, which makes the field show both;
    /// but for an empty text: clearing the field is accepted as it is. Never says why in `errorDescription`.
    ///
    /// Deliberate: the location is computed in unsigned numbers, so a caret that would leave the text to the left ends
    /// up at its right end; and it is moved for a new separator also when that lies behind it.
    /// Raises `NSRangeException` when two or more characters outside of `originalString` are said to have been selected
    /// and the edit took a separator away.
    bool isPartialStringValid(NSString& partialString, NSRange& proposedSelectedRange, const NSString& originalString,
                              NSRange originalSelectedRange, std::optional<NSString>& errorDescription) const override;

protected:
    QKIDFormatterBase() = default;

    /// From where the separators' positions are counted: from the right end; or from the left, behind a prefix of one
    /// character, each one further for those that are put in before it.
    enum class SeparatorPlaces { FromTheRight, FromTheLeft };

    /// What `validateID` is made of. A text that is too long is cut and goes through `validateID` again.
    [[nodiscard]] NSString formattedID(const NSString& input, SeparatorPlaces places) const;

private:
    struct Edit {
        const NSString& original;
        NSRange selection;
        const NSString& formatted;
        std::uint64_t needed;    // separators, by the digits of the original text
        std::uint64_t neededNow; // and by those of the formatted one
    };

    [[nodiscard]] NSString digitsOf(const NSString& string) const;
    [[nodiscard]] std::uint64_t locationAfterLosing(const Edit& edit, std::uint64_t location) const;

    std::optional<NSCharacterSet> nonIDCharacterSet_;
};

} // namespace qk
